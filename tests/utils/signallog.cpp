// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/signallog.h"

#include <QMetaProperty>

#include <utility>

using namespace Qt::StringLiterals;

namespace TestUtils {

SignalLog::SignalLog(QObject *parent)
    : QObject(parent)
{
}

void SignalLog::watch(QObject *object, const QString &name)
{
    m_names.insert(object, name);
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("record()"));
    const QMetaObject *watched = object->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < watched->methodCount(); ++i) {
        if (watched->method(i).methodType() == QMetaMethod::Signal)
            connect(object, watched->method(i), this, slot);
    }
}

QStringList SignalLog::takeEntries()
{
    return std::exchange(m_entries, {});
}

void SignalLog::record()
{
    const QObject *object = sender();
    const QMetaObject *watched = object->metaObject();
    const int signalIndex = senderSignalIndex();
    QString entry = m_names.value(sender());
    if (!entry.isEmpty())
        entry += u'.';

    for (int i = 0; i < watched->propertyCount(); ++i) {
        const QMetaProperty property = watched->property(i);
        const QVariant value = property.read(object);
        if (property.notifySignalIndex() == signalIndex && value.canConvert<QString>()) {
            m_entries.append(entry + QLatin1StringView(property.name()) + u'=' + value.toString());
            return;
        }
    }
    m_entries.append(entry + QLatin1StringView(watched->method(signalIndex).name()));
}

} // namespace TestUtils
