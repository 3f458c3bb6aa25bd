#include "SoakReport.h"

void EventLog::add(const QString &line)
{
    if (m_verbose) {
        m_out << line << Qt::endl;
    }
    m_lines.push_back(line);
    if (m_lines.size() > capacity) {
        m_lines.pop_front();
    }
}

void EventLog::print(QTextStream &out) const
{
    out << "soak: the last " << m_lines.size() << " events:" << Qt::endl;
    for (const QString &line : m_lines) {
        out << "  " << line << Qt::endl;
    }
}

QString durationText(qint64 milliseconds)
{
    if (milliseconds < 60'000) {
        return QString::asprintf("%.3f s", double(milliseconds) / 1000.0);
    }
    const qint64 seconds = milliseconds / 1000;
    if (seconds < 3600) {
        return QString::asprintf("%lldm %02llds", seconds / 60, seconds % 60);
    }
    return QString::asprintf("%lldh %02lldm", seconds / 3600, (seconds % 3600) / 60);
}

namespace {

QString countsText(const QMap<QString, int> &counts)
{
    QList<std::pair<QString, int>> entries;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        entries.append({it.key(), it.value()});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) { return a.second > b.second; });
    QStringList parts;
    for (const auto &[kind, count] : entries) {
        parts.append(QStringLiteral("%1 × %2").arg(count).arg(kind));
    }
    return parts.isEmpty() ? QStringLiteral("none") : parts.join(QStringLiteral(", "));
}

int total(const QMap<QString, int> &counts)
{
    int sum = 0;
    for (const int count : counts) {
        sum += count;
    }
    return sum;
}

} // namespace

void printReport(QTextStream &out, const SoakSummary &summary, const SoakCounters &c)
{
    const auto line = [&out](const char *label, const QString &text) {
        out << QStringLiteral("  %1 %2").arg(QString::fromLatin1(label), -30).arg(text) << Qt::endl;
    };
    out << "soak: report" << Qt::endl;
    line("seed", QString::number(summary.seed));
    const QString span =
        summary.startedAt.toString(Qt::ISODate) + QStringLiteral(" to ") + summary.endedAt.toString(Qt::ISODate);
    line("simulated hours",
         summary.stoppedEarly ? QStringLiteral("%1 of %2 asked for, stopped at the broken rule (%3)")
                                    .arg(summary.simulatedHours, 0, 'f', 2)
                                    .arg(summary.hours, 0, 'f', 2)
                                    .arg(span)
                              : QStringLiteral("%1 in all: %2 asked for, the rest to finish the last calm window (%3)")
                                    .arg(summary.simulatedHours, 0, 'f', 2)
                                    .arg(summary.hours, 0, 'f', 2)
                                    .arg(span));
    line("real time", QStringLiteral("%1 s").arg(summary.realSeconds, 0, 'f', 1));
    line("steps", QString::number(c.steps));
    line("fault kinds left out", summary.leftOut.isEmpty() ? QStringLiteral("none") : summary.leftOut.join(u','));
    line("statistics requests", QStringLiteral("%1 at the server").arg(c.statisticsRequests));
    line("account requests", QStringLiteral("%1 at the server").arg(c.accountRequests));
    line("min statistics spacing",
         c.minStatisticsSpacingMs ? durationText(*c.minStatisticsSpacingMs) : QStringLiteral("(fewer than two)"));
    line("faults switched on", QString::number(c.faultsSwitchedOn));
    line("faults met", QStringLiteral("%1 requests: %2").arg(total(c.faultsMet)).arg(countsText(c.faultsMet)));
    line("refused while offline", QStringLiteral("%1 requests (the network was down)").arg(c.refusedWhileOffline));
    line("hanging replies", QStringLiteral("%1 of %2 allowed").arg(c.hangs).arg(summary.hangBudget));
    line("refreshes", QStringLiteral("%1 successful, %2 failed").arg(c.successfulRefreshes).arg(c.failedRefreshes));
    line("rate limits (statistics)",
         QStringLiteral("%1 met; %2 numeric Retry-After waits honoured, %3 without a usable number (3 s)")
             .arg(c.rateLimitsMet)
             .arg(c.retryAfterHonoured)
             .arg(c.retryAfterDefault));
    line("network", QStringLiteral("%1 outages, %2 recoveries after it returned (longest wait %3, faults permitting)")
                        .arg(c.networkOutages)
                        .arg(c.networkRecoveries)
                        .arg(durationText(c.longestNetworkRecoveryMs)));
    line("sleep",
         QStringLiteral("%1 sleeps (%2 with paused timers), %3 recoveries after waking (longest wait %4, faults "
                        "permitting)")
             .arg(c.sleeps)
             .arg(c.sleepsWithPausedTimers)
             .arg(c.sleepRecoveries)
             .arg(durationText(c.longestSleepRecoveryMs)));
    line("calm windows", QStringLiteral("%1 begun, %2 recovered in time (%3; longest wait %4)")
                             .arg(c.calmWindows)
                             .arg(c.calmRecoveries)
                             .arg(countsText(c.calmWindowsByKind))
                             .arg(durationText(c.longestCalmRecoveryMs)));
    line("restarts", QStringLiteral("%1 (key and settings checked %2 times)").arg(c.restarts).arg(c.settingsChecks));
    line("sign-outs", QStringLiteral("%1 (%2 reconnects, %3 reconnect attempts failed)")
                          .arg(c.signOuts)
                          .arg(c.reconnects)
                          .arg(c.failedReconnects));
    line("refresh presses", QStringLiteral("%1 (%2 bursts)").arg(c.refreshPresses).arg(c.refreshBursts));
    line("period switches",
         QStringLiteral("%1 accepted, %2 refused").arg(c.periodSwitches).arg(c.periodSwitchesRefused));
    line("settings saved", QString::number(c.settingsSaved));
    line("sales metric changes", QString::number(c.salesMetricChanges));
    line("popover opens", QString::number(c.popoverOpens));
    line("statistics in flight", QStringLiteral("at most %1 at once").arg(c.maxStatisticsInFlight));
    line("late answers shown", QStringLiteral("%1 answers published after the account changed or the user signed out")
                                   .arg(c.figuresOfAnotherAccount));
    line("resent by the HTTP layer", QString::number(c.resentByHttpLayer));
    if (c.settleTimeouts > 0) {
        line("slow local round trips", QString::number(c.settleTimeouts));
    }
}
