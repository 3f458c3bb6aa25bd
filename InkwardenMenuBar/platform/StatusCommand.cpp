#include "StatusCommand.h"

#include "StatusBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QVariantMap>

namespace {

constexpr int callTimeoutMs = 5000;

QDBusMessage getAllCall()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(StatusBus::service(), StatusBus::objectPath(),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    call << StatusBus::interface();
    return call;
}

struct Reading {
    QString title;
    QString toolTip;
    QString state;
};

std::optional<Reading> readingFrom(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return std::nullopt;
    }
    const QVariantMap properties = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
    Reading reading{properties.value(QStringLiteral("Title")).toString(),
                    properties.value(QStringLiteral("ToolTip")).toString(),
                    properties.value(QStringLiteral("State")).toString()};
    // Between taking its bus name and publishing its first status, a starting Inkwarden has none.
    if (reading.title.isEmpty()) {
        return std::nullopt;
    }
    return reading;
}

} // namespace

StatusCommand::StatusCommand(QDBusConnection bus, Options options, LineWriter output, LineWriter errors,
                             QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_options(std::move(options))
    , m_output(std::move(output))
    , m_errors(std::move(errors))
{}

int StatusCommand::printOnce()
{
    const QDBusConnectionInterface *busInterface = m_bus.isConnected() ? m_bus.interface() : nullptr;
    if (busInterface == nullptr || !busInterface->isServiceRegistered(StatusBus::service())) {
        m_errors(StatusLine::notRunningMessage());
        return notRunningExitCode;
    }
    const QDBusMessage reply = m_bus.call(getAllCall(), QDBus::Block, callTimeoutMs);
    const std::optional<Reading> reading = readingFrom(reply);
    if (!reading) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            //: Printed by `inkwarden --status`: %1 is the reason the session bus gave.
            m_errors(tr("Inkwarden did not tell its status: %1").arg(reply.errorMessage()));
        } else {
            //: Printed by `inkwarden --status`.
            m_errors(tr("Inkwarden is starting and has no status yet."));
        }
        return failureExitCode;
    }
    m_output(formatted(reading->title, reading->toolTip, reading->state));
    return 0;
}

bool StatusCommand::follow()
{
    if (!m_bus.isConnected()) {
        //: Printed by `inkwarden --status --follow` when there is no D-Bus session bus.
        m_errors(tr("There is no session bus to find Inkwarden on."));
        return false;
    }
    // Subscribed before the first read, so that no change falls between the two.
    m_bus.connect(StatusBus::service(), StatusBus::objectPath(), StatusBus::interface(), QStringLiteral("Changed"),
                  this, SLOT(statusChanged(QString, QString, QString)));
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(StatusBus::service());
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                if (newOwner.isEmpty()) {
                    print(StatusLine::notRunning(m_options.format));
                } else {
                    readAsync();
                }
            });
    if (m_bus.interface()->isServiceRegistered(StatusBus::service())) {
        readAsync();
    } else {
        print(StatusLine::notRunning(m_options.format));
    }
    return true;
}

void StatusCommand::statusChanged(const QString &title, const QString &toolTip, const QString &state)
{
    print(formatted(title, toolTip, state));
}

void StatusCommand::readAsync()
{
    auto *pending = new QDBusPendingCallWatcher(m_bus.asyncCall(getAllCall(), callTimeoutMs), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        // A failed read is no news: the Changed signal follows once the status is published.
        if (const std::optional<Reading> reading = readingFrom(pending->reply())) {
            print(formatted(reading->title, reading->toolTip, reading->state));
        }
    });
}

QString StatusCommand::formatted(const QString &title, const QString &toolTip, const QString &state) const
{
    return StatusLine::format(m_options.format, title, toolTip, state, m_options.clickCommand);
}

void StatusCommand::print(const QString &line)
{
    if (m_printedAny && line == m_lastLine) {
        return;
    }
    m_printedAny = true;
    m_lastLine = line;
    m_output(line);
}
