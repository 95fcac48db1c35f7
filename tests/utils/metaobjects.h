// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <QString>
#include <QStringList>

namespace TestUtils {

/// What a class itself adds to its meta-object, in its order: signals as "signal name(type parameter)", other methods
/// as "name(type parameter)". A result that is not void stands in front.
inline QStringList ownMethods(const QMetaObject &metaObject)
{
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        QStringList parameters;
        for (int j = 0; j < method.parameterCount(); ++j)
            parameters.append(QString::fromLatin1(method.parameterTypes().at(j) + ' ' + method.parameterNames().at(j)));
        QString text;
        if (method.methodType() == QMetaMethod::Signal)
            text += QStringLiteral("signal ");
        if (method.returnMetaType() != QMetaType::fromType<void>())
            text += QString::fromLatin1(method.typeName()) + u' ';
        methods.append(text + QString::fromLatin1(method.name()) + u'(' + parameters.join(QStringLiteral(", ")) + u')');
    }
    return methods;
}

} // namespace TestUtils
