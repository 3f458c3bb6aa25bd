#include "TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::array HandledSignals = {SIGTERM, SIGINT, SIGHUP};

// Written by the handler, read on the main thread: [0] is the write end, [1] the read end.
int signalSockets[2] = {-1, -1};

extern "C" void forwardSignal(int signalNumber)
{
    const int savedErrno = errno;
    const unsigned char number = static_cast<unsigned char>(signalNumber);
    // A full socket means earlier signals are still unread: one of them is enough to quit.
    [[maybe_unused]] const ssize_t written = ::write(signalSockets[0], &number, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    if (signalSockets[0] != -1) {
        return; // another watcher has them
    }
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, signalSockets) != 0) {
        signalSockets[0] = signalSockets[1] = -1;
        return;
    }
    m_notifier = new QSocketNotifier(signalSockets[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::readSignals);

    struct sigaction action = {};
    action.sa_handler = forwardSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : HandledSignals) {
        ::sigaction(signalNumber, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    for (const int signalNumber : HandledSignals) {
        ::sigaction(signalNumber, &action, nullptr);
    }
    delete m_notifier;
    m_notifier = nullptr;
    ::close(signalSockets[0]);
    ::close(signalSockets[1]);
    signalSockets[0] = signalSockets[1] = -1;
}

void TerminationSignals::readSignals()
{
    unsigned char number = 0;
    while (::read(signalSockets[1], &number, 1) == 1) {
        Q_EMIT terminationRequested(number);
    }
}
