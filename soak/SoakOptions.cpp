#include "SoakOptions.h"

#include "FaultPlan.h"

#include <cmath>

QString SoakOptions::usage()
{
    return QStringLiteral(
        "Usage: inkwarden-soak [--hours H] [--seed N] [--hangs N] [--without KIND[,KIND…]] [--verbose]\n"
        "\n"
        "Runs one connected Inkwarden store against the development server in-process for H simulated\n"
        "hours (default 24), with virtual time and random faults, and checks that it never sends two\n"
        "statistics requests within 3 seconds, honours every Retry-After, keeps its key and settings\n"
        "across restarts and recovers once the faults are gone.\n"
        "\n"
        "  --hours H        simulated hours, fractions allowed (default 24)\n"
        "  --seed N         seed of the random choices (default 1); the run prints it\n"
        "  --hangs N        hanging replies allowed, each costing 30 real seconds\n"
        "                   (default: one per 12 simulated hours)\n"
        "  --without KINDS  leave fault kinds out: status, malformed, empty, html, retry-after,\n"
        "                   delay, reset, hang\n"
        "  --verbose        print every event as it happens\n");
}

std::optional<SoakOptions> SoakOptions::parse(const QStringList &arguments, QString *message, bool *isHelp)
{
    SoakOptions options;
    *isHelp = false;
    const auto fail = [message](const QString &text) -> std::optional<SoakOptions> {
        *message = text + u'\n' + usage();
        return std::nullopt;
    };
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const auto value = [&]() -> std::optional<QString> {
            if (i + 1 >= arguments.size()) {
                return std::nullopt;
            }
            return arguments.at(++i);
        };
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            *isHelp = true;
            *message = usage();
            return std::nullopt;
        }
        if (argument == QLatin1String("--verbose")) {
            options.verbose = true;
            continue;
        }
        const std::optional<QString> text = value();
        if (!text) {
            return fail(QStringLiteral("%1 needs a value.").arg(argument));
        }
        bool ok = false;
        if (argument == QLatin1String("--hours")) {
            options.hours = text->toDouble(&ok);
            if (!ok || !std::isfinite(options.hours) || options.hours <= 0 || options.hours > 24 * 365) {
                return fail(QStringLiteral("--hours takes a positive number of hours."));
            }
        } else if (argument == QLatin1String("--seed")) {
            options.seed = text->toULongLong(&ok);
            if (!ok) {
                return fail(QStringLiteral("--seed takes a whole number."));
            }
        } else if (argument == QLatin1String("--hangs")) {
            options.hangs = text->toInt(&ok);
            if (!ok || *options.hangs < 0) {
                return fail(QStringLiteral("--hangs takes a count."));
            }
        } else if (argument == QLatin1String("--without")) {
            for (const QString &kind : text->split(u',', Qt::SkipEmptyParts)) {
                const QString trimmed = kind.trimmed();
                if (!FaultPlan::families().contains(trimmed)) {
                    return fail(QStringLiteral("Unknown fault kind \"%1\".").arg(trimmed));
                }
                options.without.insert(trimmed);
            }
        } else {
            return fail(QStringLiteral("Unknown option \"%1\".").arg(argument));
        }
    }
    return options;
}
