// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "connectionsettings.h"
#include "devicemodel.h"
#include "tarn_global.h"

#include <QList>
#include <QObject>

#include <memory>

namespace Tarn {

class Emulator;

enum class TextStyle {
    Plain,
    NonBreaking, // with blanks at which no line is broken
};

// What is known about emulators and their software. One at a time; main thread only.
//
// The emulators are those virtual machines of the hypervisor that carry our metadata, an element "emulator" of the
// namespace "urn:velmo:emulator:1"; the SDK stores nothing of its own. It connects in the background, so there is
// none at first.
class TARN_EXPORT Sdk : public QObject
{
    Q_OBJECT

public:
    explicit Sdk(const ConnectionSettings &settings, QObject *parent = nullptr);
    ~Sdk() override; // waits some seconds for a call into the hypervisor that is going; machines go on running

    static Sdk *instance();               // null while there is none
    static QList<Emulator *> emulators(); // in the order of their names; owned by the SDK
    static QString osVariant(TextStyle style = TextStyle::Plain);

    // Installed device models and those of the emulators, in the order of their names.
    QList<DeviceModel> deviceModels() const;

    bool isConnected() const;
    QString connectionUri() const;   // the one in use; empty until it is decided
    QString connectionError() const; // a text for the user; empty unless connecting has failed
    void reconnect();                // tries again after a failure; does nothing otherwise

Q_SIGNALS:
    void emulatorAdded(int index);         // it is in the list by now
    void aboutToRemoveEmulator(int index); // it is still in the list
    // The set of known models, or the emulators from which it comes: also comes after every removal of an emulator.
    void deviceModelsChanged();
    void connected();
    void connectionFailed(const QString &error);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace Tarn
