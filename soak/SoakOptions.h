#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

// What a soak run is asked to do, from its command line.
struct SoakOptions {
    double hours = 24.0;
    quint64 seed = 1;
    // Hanging replies allowed in the run; each costs the service's 30-second time-out in real time.
    // By default one per twelve simulated hours.
    std::optional<int> hangs;
    // Fault families left out (FaultPlan::families()).
    QSet<QString> without;
    // Every event as it happens, not only the last ones on failure.
    bool verbose = false;

    int hangBudget() const { return hangs.value_or(int(hours / 12.0)); }

    // The options, or the text to print (usage or what was wrong) in `message`.
    static std::optional<SoakOptions> parse(const QStringList &arguments, QString *message, bool *isHelp);
    static QString usage();
};
