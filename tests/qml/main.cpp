// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "testsetup.h"

#include <QApplication>
#include <QtQuickTest>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv); // the native dialogs are widgets
    TestSetup setup;
    const int failures = quick_test_main_with_setup(argc, argv, "tst_qml", QUICK_TEST_SOURCE_DIR, &setup);
    if (setup.warnings() > 0)
        qCritical("The QML engine gave %d warnings.", setup.warnings());
    return failures + setup.warnings();
}
