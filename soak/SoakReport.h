#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <deque>
#include <optional>

// The last things that happened in a soak, with their step and virtual time: printed when a rule
// breaks, so the scenario can be read back (and replayed with the same seed).
class EventLog
{
public:
    EventLog(QTextStream &out, bool verbose)
        : m_out(out)
        , m_verbose(verbose)
    {}

    void add(const QString &line);
    void print(QTextStream &out) const;

private:
    static constexpr std::size_t capacity = 60;

    QTextStream &m_out;
    bool m_verbose;
    std::deque<QString> m_lines;
};

// A duration as the report shows it: "2.200 s", "14m 05s", "3h 02m".
QString durationText(qint64 milliseconds);

// What a soak did, counted as it goes.
struct SoakCounters {
    qint64 steps = 0;
    int statisticsRequests = 0;
    int accountRequests = 0;
    QMap<QString, int> faultsMet;
    int refusedWhileOffline = 0;
    int successfulRefreshes = 0;
    int failedRefreshes = 0;
    int rateLimitsMet = 0;
    int retryAfterHonoured = 0;
    int retryAfterDefault = 0;
    int networkOutages = 0;
    int networkRecoveries = 0;
    qint64 longestNetworkRecoveryMs = 0;
    int sleeps = 0;
    int sleepsWithPausedTimers = 0;
    int sleepRecoveries = 0;
    qint64 longestSleepRecoveryMs = 0;
    int calmWindows = 0;
    int calmRecoveries = 0;
    QMap<QString, int> calmWindowsByKind;
    qint64 longestCalmRecoveryMs = 0;
    int restarts = 0;
    int settingsChecks = 0;
    int signOuts = 0;
    int reconnects = 0;
    int failedReconnects = 0;
    int refreshPresses = 0;
    int refreshBursts = 0;
    int periodSwitches = 0;
    int periodSwitchesRefused = 0;
    int settingsSaved = 0;
    int salesMetricChanges = 0;
    int popoverOpens = 0;
    int faultsSwitchedOn = 0;
    int hangs = 0;
    std::optional<qint64> minStatisticsSpacingMs;
    int maxStatisticsInFlight = 0;
    int figuresOfAnotherAccount = 0;
    int resentByHttpLayer = 0;
    int settleTimeouts = 0;
};

struct SoakSummary {
    quint64 seed = 0;
    double hours = 0;
    double simulatedHours = 0;
    QDateTime startedAt;
    QDateTime endedAt;
    bool stoppedEarly = false;
    double realSeconds = 0;
    QStringList leftOut;
    int hangBudget = 0;
};

void printReport(QTextStream &out, const SoakSummary &summary, const SoakCounters &counters);
