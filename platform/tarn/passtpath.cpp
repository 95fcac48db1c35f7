// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "passtpath.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <dlfcn.h>

using namespace Qt::StringLiterals;

namespace Tarn::Internal {

namespace {

// The folder "tarn" beside this library.
QByteArray folderOfOurPasst()
{
    Dl_info library{};
    if (!dladdr(reinterpret_cast<const void *>(&preferOurPasst), &library))
        return {};
    const QFileInfo file(QFile::decodeName(library.dli_fname));
    return QFile::encodeName(file.absolutePath() + "/tarn"_L1);
}

} // namespace

void preferOurPasst()
{
    const QByteArray folder = folderOfOurPasst();
    QByteArrayList path = qgetenv("PATH").split(':');
    path.removeAll(folder);
    if (QStandardPaths::findExecutable(u"passt"_s, QString::fromLocal8Bit(path.join(':')).split(u':')).isEmpty())
        return;
    path.prepend(folder);
    qputenv("PATH", path.join(':'));
}

} // namespace Tarn::Internal
