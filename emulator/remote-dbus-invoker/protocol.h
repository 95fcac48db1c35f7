// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace Emulator {

/*! One call, as a client asks for it. */
struct Request
{
    QString bus;
    QString service;
    QString path;
    QString interface;
    QString method;
    QByteArray arguments; // typed values, see parseArguments(); may be empty
    QString error;        // why the text is no request; empty when all is well
};

/*!
    Reads a request: six fields with one blank between any two of them. The last one is everything that follows the
    fifth blank, blanks included, and may be empty. Names that no bus would carry are refused here, before they reach
    the bus library.
*/
Request parseRequest(const QString &text);

/*! The answer to one call. */
struct Reply
{
    QString item;          // the method
    QStringList arguments; // of the call, as texts
    QString value;         // what the method returned, as text
    QString errorName;     // empty on success
    QString errorMessage;
};

/*!
    Makes a reply's frame: five fields with colons between them, the arguments with "|" between them.

    Nothing can be quoted on this wire, so a colon inside a field becomes "꞉" (U+A789), which looks like one, and a "|"
    inside an argument becomes "¦" (U+00A6): a reply has five fields whatever is in them.
*/
QString formatReply(const Reply &reply);

/*! Returned \a values as one text, with "|" between them; booleans are true and false, items of a list have ","
 * between. */
QString formatValues(const QVariantList &values);

/*! The full name of an error of the invoker's own, such as "InvalidArguments". */
QString errorName(const QString &name);

} // namespace Emulator
