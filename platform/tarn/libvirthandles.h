// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libvirt/libvirt.h>
#include <libvirt/virterror.h>

#include <QString>

#include <cstdlib>
#include <memory>

namespace Tarn::Internal {

template<auto Free>
struct FreeWith
{
    template<typename T>
    void operator()(T *object) const
    {
        Free(object);
    }
};

using ConnectionHandle = std::unique_ptr<virConnect, FreeWith<virConnectClose>>;
using DomainHandle = std::unique_ptr<virDomain, FreeWith<virDomainFree>>;
using TextHandle = std::unique_ptr<char, FreeWith<std::free>>;

// What went wrong in the latest call on this thread.
inline QString lastLibvirtError()
{
    const virError *error = virGetLastError();
    return error && error->message ? QString::fromUtf8(error->message) : QString();
}

} // namespace Tarn::Internal
