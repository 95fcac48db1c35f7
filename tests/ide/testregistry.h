// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace IdeTests {

using TestFactory = std::function<std::unique_ptr<QObject>()>;

void addTest(const QMetaObject &metaObject, const TestFactory &factory);

/// The test class of this name, or null.
std::unique_ptr<QObject> createTest(const QString &className);

/// A static object of this type makes a test class known.
template<typename Test>
struct RegisterTest
{
    RegisterTest()
    {
        addTest(Test::staticMetaObject, [] { return std::make_unique<Test>(); });
    }
};

} // namespace IdeTests
