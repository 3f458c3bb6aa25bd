#pragma once

#include "StatusLine.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

// `inkwarden --status`: reads the running Inkwarden's panel status from the session bus and prints
// it. Once, or with `follow` on every change as the Changed signal brings it (no polling), waiting
// for Inkwarden to appear when it is not running and showing nothing while it is gone. It never makes
// the running Inkwarden ask the server for anything.
class StatusCommand : public QObject
{
    Q_OBJECT

public:
    static constexpr int notRunningExitCode = 3;
    static constexpr int failureExitCode = 1;

    struct Options {
        StatusLine::Format format = StatusLine::Format::text;
        bool follow = false;
        // What a click on the bar's text runs, where the format says (genmon): this program.
        QString clickCommand;
    };
    using LineWriter = std::function<void(const QString &line)>;

    StatusCommand(QDBusConnection bus, Options options, LineWriter output, LineWriter errors,
                  QObject *parent = nullptr);

    // Prints the status once and returns the exit code.
    int printOnce();
    // Prints the status now and again on every change, for as long as the event loop runs; false
    // (with the reason written) when there is no session bus to follow it on.
    bool follow();

private Q_SLOTS:
    void statusChanged(const QString &title, const QString &toolTip, const QString &state);

private:
    void readAsync();
    QString formatted(const QString &title, const QString &toolTip, const QString &state) const;
    void print(const QString &line);

    QDBusConnection m_bus;
    Options m_options;
    LineWriter m_output;
    LineWriter m_errors;
    QDBusServiceWatcher m_watcher;
    QString m_lastLine;
    bool m_printedAny = false;
};
