// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/testregistry.h"

#include <QMap>

namespace IdeTests {

namespace {

// Filled by static objects in other files, hence made on first use.
QMap<QString, TestFactory> &factories()
{
    static QMap<QString, TestFactory> theFactories;
    return theFactories;
}

} // namespace

void addTest(const QMetaObject &metaObject, const TestFactory &factory)
{
    factories().insert(QString::fromLatin1(metaObject.className()), factory);
}

std::unique_ptr<QObject> createTest(const QString &className)
{
    const TestFactory factory = factories().value(className);
    return factory ? factory() : nullptr;
}

} // namespace IdeTests
