// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/streampipeline.h"

#include <QString>

namespace EmulationManagement::Internal {

// From a camera to the emulator. Its elements exist from the start; assemble() makes a chain of them.
class CameraPipeline : public StreamPipeline
{
public:
    // The name of the factory that makes the source; no source when it is empty or not known.
    explicit CameraPipeline(const QString &sourceFactory);

    bool hasSource() const { return bool(m_source); }

    // Sets the property of the source that says which camera it is. Without a source, without a name or value, and
    // where the source has no such property, nothing is set.
    void setSourceProperty(const QString &name, const QString &value);
    // Whether the source is to send JPEG, which is decoded ahead of the filter. What runs is started anew when that
    // changes.
    void setJpegDecoded(bool decoded);
    // The pictures that are wanted of the camera; to be set only while the pipeline is stopped.
    void setCaps(const QString &caps);
    void setUpEncoderAndSink(const char *host, quint16 port);

    // Once assembled, or without a source, this does nothing.
    void assemble();

private:
    bool isAssembled() const;

    GstElementPointer m_source;
    GstElementPointer m_decoder; // null while the source sends raw pictures
    GstElementPointer m_capsFilter;
    GstElementPointer m_encoder;
    GstElementPointer m_payloader;
    GstElementPointer m_sink;
};

} // namespace EmulationManagement::Internal
