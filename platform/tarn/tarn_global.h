// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/qglobal.h>

#ifdef TARN_LIBRARY
#define TARN_EXPORT Q_DECL_EXPORT
#else
#define TARN_EXPORT Q_DECL_IMPORT
#endif
