// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caller.h"

#include "arguments.h"
#include "common/bus.h"

#include <QDBusError>

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

// A bus lets one connection wait for 128 answers at once. A service that hangs must not use them all up.
constexpr int mostOpenCalls = 50;

// What may pile up before a service that hangs.
constexpr int mostWaitingCalls = 10'000;
constexpr qsizetype mostUnansweredBytes = 64 * 1024 * 1024;

const QStringList &busNames()
{
    static const QStringList names{u"system"_s, u"session"_s};
    return names;
}

QString connectionName(const QString &bus)
{
    return "invoker-"_L1 + bus;
}

} // namespace

// One call on its way. Unlike pending call watchers, which are told late of answers that came early, these finish in
// the order in which the answers arrive.
class Call : public QObject
{
    Q_OBJECT

public:
    Call(const QDBusMessage &message, const QDBusConnection &connection, QObject *parent)
        : QObject(parent)
    {
        const bool sent = connection.callWithCallback(
            message, this, SLOT(onAnswer(QDBusMessage)), SLOT(onError(QDBusError, QDBusMessage)));
        if (!sent) {
            const QDBusMessage answer = message.createErrorReply(connection.lastError());
            QMetaObject::invokeMethod(this, [this, answer] { Q_EMIT finished(answer); }, Qt::QueuedConnection);
        }
    }

Q_SIGNALS:
    void finished(const QDBusMessage &answer);

private Q_SLOTS:
    void onAnswer(const QDBusMessage &answer) { Q_EMIT finished(answer); }
    void onError(const QDBusError &error, const QDBusMessage &request)
    {
        Q_EMIT finished(request.createErrorReply(error));
    }
};

Caller::Caller(const QString &systemBus, QObject *parent)
    : QObject(parent)
    , m_systemBus(systemBus)
{
    registerArgumentTypes();
}

Caller::~Caller()
{
    for (const QString &bus : busNames())
        QDBusConnection::disconnectFromBus(connectionName(bus));
}

void Caller::call(const QString &request, QObject *context, const Callback &callback)
{
    const Request parsed = parseRequest(request);
    Reply reply{.item = parsed.method, .arguments = {}, .value = {}, .errorName = {}, .errorMessage = {}};
    const auto refuse = [&](const QString &name, const QString &message) {
        reply.errorName = errorName(name);
        reply.errorMessage = message;
        callback(reply);
    };
    if (!parsed.error.isEmpty()) {
        // What stands in the place of the method is not worth repeating.
        reply.item.clear();
        return refuse(u"InvalidRequest"_s, parsed.error);
    }

    const Arguments arguments = parseArguments(parsed.arguments);
    if (!arguments.error.isEmpty())
        return refuse(u"InvalidArguments"_s, arguments.error);
    reply.arguments = arguments.texts;

    if (!busNames().contains(parsed.bus))
        return refuse(u"UnknownBus"_s, u"There is no bus \"%1\""_s.arg(shortened(parsed.bus.toUtf8())));

    QDBusMessage message = QDBusMessage::createMethodCall(parsed.service, parsed.path, parsed.interface, parsed.method);
    message.setArguments(arguments.values);
    const qsizetype size = request.size() * qsizetype(sizeof(QChar));
    if (!hasRoomFor(size, parsed.service))
        return refuse(u"TooManyCalls"_s, u"Too many calls are waiting for an answer"_s);
    m_unanswered += size;
    m_lanes[parsed.service].waiting.enqueue({parsed.bus, message, context, reply, callback, size});
    startJobs(parsed.service);
}

// A single request has room whatever its size.
bool Caller::hasRoomFor(qsizetype size, const QString &service)
{
    const auto hasRoom = [&] {
        const auto lane = m_lanes.constFind(service);
        return (lane == m_lanes.cend() || lane->waiting.size() < mostWaitingCalls)
            && (m_unanswered == 0 || m_unanswered + size <= mostUnansweredBytes);
    };
    if (hasRoom())
        return true;
    // Nobody waits any more for what clients that have gone wanted.
    for (Lane &any : m_lanes) {
        any.waiting.removeIf([this](const Job &job) {
            if (!job.context)
                m_unanswered -= job.size;
            return !job.context;
        });
    }
    return hasRoom();
}

void Caller::startJobs(const QString &service)
{
    for (auto lane = m_lanes.find(service); lane != m_lanes.end(); lane = m_lanes.find(service)) {
        if (lane->waiting.isEmpty()) {
            if (lane->open == 0)
                m_lanes.erase(lane);
            return;
        }
        if (lane->open >= mostOpenCalls)
            return;
        const Job job = lane->waiting.dequeue();
        if (job.context)
            start(job);
        else
            m_unanswered -= job.size;
    }
}

void Caller::start(const Job &job)
{
    const std::optional<QDBusConnection> bus = connection(job.bus);
    if (!bus) {
        m_unanswered -= job.size;
        Reply reply = job.reply;
        reply.errorName = errorName(u"BusUnavailable"_s);
        reply.errorMessage = u"There is no connection to the %1 bus"_s.arg(job.bus);
        job.callback(reply);
        return;
    }

    ++m_lanes[job.message.service()].open;
    auto *call = new Call(job.message, *bus, this);
    connect(call, &Call::finished, this, [this, job, call](const QDBusMessage &answer) {
        call->deleteLater();
        Reply reply = job.reply;
        if (answer.type() == QDBusMessage::ErrorMessage) {
            reply.errorName = answer.errorName();
            reply.errorMessage = answer.errorMessage();
        } else {
            reply.value = formatValues(answer.arguments());
        }
        if (job.context)
            job.callback(reply);
        m_unanswered -= job.size;
        --m_lanes[job.message.service()].open;
        startJobs(job.message.service());
    });
}

// A bus that went away is looked for again at the next call.
std::optional<QDBusConnection> Caller::connection(const QString &bus)
{
    const QString name = connectionName(bus);
    QDBusConnection connection(name);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        connection = connectToBus(bus == "system"_L1 ? m_systemBus : bus, name);
    }
    if (!connection.isConnected())
        return std::nullopt;
    return connection;
}

} // namespace Emulator

#include "caller.moc"
