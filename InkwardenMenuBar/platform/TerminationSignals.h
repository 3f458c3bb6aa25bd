#pragma once

#include <QObject>

class QSocketNotifier;

// SIGTERM, SIGINT and SIGHUP as a Qt signal on the main thread. The session ends Inkwarden with
// SIGTERM at logout, and a package upgrade or `kill` does the same; without this the process would
// die on the spot instead of quitting the way "Quit Inkwarden" does: the panel item withdrawn, the
// settings written, exit status 0.
//
// The handler only writes the signal number into a socket pair (about the only thing a handler may
// safely do); the read end wakes the event loop. One watcher per process.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

    // False when the socket pair or the handlers could not be set up; the signals then keep their
    // default action.
    bool isActive() const { return m_notifier != nullptr; }

Q_SIGNALS:
    void terminationRequested(int signalNumber);

private:
    void readSignals();

    QSocketNotifier *m_notifier = nullptr;
};
