// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/qglobal.h>

#ifdef QSSH_LIBRARY
#define QSSH_EXPORT Q_DECL_EXPORT
#else
#define QSSH_EXPORT Q_DECL_IMPORT
#endif
