#include "SoakRun.h"

#include "store/SettingsKeys.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

using namespace std::chrono_literals;

SoakRun::SoakRun(const SoakOptions &options, QTextStream &out)
    : m_options(options)
    , m_out(out)
    , m_random(options.seed)
    , m_stepRandom(options.seed ^ 0x9E3779B97F4A7C15ULL)
    , m_faultPlan(options.without, options.hangBudget())
    , m_log(out, options.verbose)
{}

SoakRun::~SoakRun()
{
    // The store first: its requests are aborted while the network and the server still stand.
    m_store.reset();
}

bool SoakRun::run()
{
    m_realTime.start();
    m_out << "soak: seed " << m_options.seed << ", " << m_options.hours << " simulated hours from "
          << now().toString(Qt::ISODate) << Qt::endl;
    setUp();

    loop(m_end, true);
    // Whatever the day left behind, the store has to come back: one last calm window.
    if (!m_failure) {
        if (!m_calm) {
            beginCalm(QStringLiteral("closing"));
        }
        loop(now().addDays(1), false);
    }
    if (!m_failure) {
        finalReadBack();
    }

    if (m_failure) {
        m_log.print(m_out);
    }
    SoakSummary summary;
    summary.seed = m_options.seed;
    summary.hours = m_options.hours;
    summary.simulatedHours = double(m_start.msecsTo(now())) / 3600'000.0;
    summary.startedAt = m_start;
    summary.endedAt = now();
    summary.stoppedEarly = m_failure.has_value();
    summary.realSeconds = double(m_realTime.elapsed()) / 1000.0;
    summary.leftOut = QStringList(m_options.without.cbegin(), m_options.without.cend());
    summary.leftOut.sort();
    summary.hangBudget = m_options.hangBudget();
    printReport(m_out, summary, m_counters);
    m_out << (m_failure ? QStringLiteral("soak: FAIL: ") + *m_failure : QStringLiteral("soak: PASS")) << Qt::endl;
    return !m_failure;
}

void SoakRun::setUp()
{
    m_server = std::make_unique<DevServer>();
    m_server->clock().setSource([this] { return m_virtualClock.now(); });
    if (m_server->listen() == 0) {
        qFatal("the development server could not listen");
    }
    QObject::connect(m_server.get(), &DevServer::requestRecorded, this,
                     [this](const RecordedRequest &entry) { requestArrived(entry); });
    m_network.onSent = [this](const SoakNetwork::Sent &sent) { requestSent(sent); };
    m_network.onFinished = [this](const SoakNetwork::Finished &finished) { replyFinished(finished); };
    m_clock.setAfterEveryTimer([this] { settle(); });

    m_start = now();
    m_end = m_start.addMSecs(qint64(m_options.hours * 3600.0 * 1000.0));
    m_modelCooldownUntil = m_start;
    m_nextActionAt = m_start.addSecs(uniform(5, 120));
    m_nextCalmAt = m_start.addSecs(uniform(3600, 3LL * 3600));

    // A user who has been connected for a while: a key in the keyring, the server and the first
    // account in the settings.
    const ApiKeyGrant *grant = m_server->apiKeys().find(ApiKeys::demoKey());
    m_demoAccounts = grant->accountIds;
    m_secrets.key = ApiKeys::demoKey();
    m_preferences = std::make_unique<Preferences>(m_settingsFolder.filePath(QStringLiteral("inkwarden.conf")));
    m_preferences->setString(SettingsKeys::serverURL, m_server->baseUrl().toString());
    m_preferences->setString(SettingsKeys::accountID, m_demoAccounts.first());

    m_expected.apiKey = ApiKeys::demoKey();
    m_expected.serverURL = m_server->baseUrl().toString();
    m_expected.accountID = m_demoAccounts.first();
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        m_expected.salesMetricOrder.append(metric);
    }

    makeStore();
    checkReadBack(QStringLiteral("at the first start"));
    startStore();
}

void SoakRun::makeStore()
{
    m_store = std::make_unique<RoyaltiesStore>(StoreEnvironment{m_clock, m_secrets, *m_preferences, m_reachability,
                                                                m_desktop, m_loginItems, m_notifications, m_network,
                                                                m_appInfo, m_locale});
    RoyaltiesStore *store = m_store.get();
    QObject::connect(store, &RoyaltiesStore::lastUpdatedChanged, this, [this, store] {
        if (store->lastUpdated()) {
            refreshSucceeded();
        }
    });
    QObject::connect(store, &RoyaltiesStore::menuBarTitleChanged, this, [this, store] {
        if (store->menuBarTitle() == RoyaltiesStore::failedTitle()) {
            refreshFailed();
        }
    });
    QObject::connect(store, &RoyaltiesStore::nextRefreshAtChanged, this, [this, store] {
        if (store->nextRefreshAt()) {
            m_intervalInForce = store->refreshMinutes();
        }
    });
    m_intervalInForce = store->refreshMinutes();
}

void SoakRun::startStore()
{
    m_store->start();
    // The network monitor's first report, which comes straight after the start.
    m_reachability.report(m_online);
    settle();
}

void SoakRun::restart()
{
    settle();
    noticeSavedKey();
    ++m_counters.restarts;
    note(QStringLiteral("restart: the store goes away and comes back from the same settings file and keyring"));
    m_store.reset();
    if (m_pendingConnect != PendingConnect::none) {
        // Quitting took the connection attempt with it.
        finishPendingConnect(true);
    }
    m_preferences.reset();
    m_preferences = std::make_unique<Preferences>(m_settingsFolder.filePath(QStringLiteral("inkwarden.conf")));
    makeStore();
    checkReadBack(QStringLiteral("after a restart"));
    startStore();
}

void SoakRun::checkReadBack(const QString &when)
{
    ++m_counters.settingsChecks;
    const QStringList differences = m_expected.differences(*m_store, m_secrets.key);
    if (!differences.isEmpty()) {
        fail(QStringLiteral("a key or setting was lost %1: %2").arg(when, differences.join(QStringLiteral("; "))));
    }
}

void SoakRun::finalReadBack()
{
    settle();
    noticeSavedKey();
    note(QStringLiteral("final read-back from the settings file and keyring"));
    m_store.reset();
    m_preferences.reset();
    m_preferences = std::make_unique<Preferences>(m_settingsFolder.filePath(QStringLiteral("inkwarden.conf")));
    makeStore();
    checkReadBack(QStringLiteral("at the end"));
    m_store.reset();
}

void SoakRun::loop(const QDateTime &until, bool actions)
{
    while (!m_failure && now() < until) {
        ++m_counters.steps;
        housekeeping();
        if (m_failure) {
            break;
        }
        if (m_calm) {
            tendCalm();
            if (!actions && !m_calm) {
                break;
            }
        } else if (!actions) {
            break;
        } else if (now() >= m_nextCalmAt && m_pendingConnect == PendingConnect::none) {
            static const QStringList kinds{QStringLiteral("quiet"), QStringLiteral("network return"),
                                           QStringLiteral("network return"), QStringLiteral("wake"),
                                           QStringLiteral("wake")};
            beginCalm(kinds.at(uniform(0, kinds.size() - 1)));
        } else if (now() >= m_nextActionAt) {
            randomAction();
            // About two things a minute, at random moments.
            const double mean = 30'000.0;
            const auto gap = qint64(std::exponential_distribution<double>(1.0 / mean)(m_random));
            m_nextActionAt = now().addMSecs(std::max<qint64>(gap, 200));
        }
        if (m_failure) {
            break;
        }
        advanceStep();
    }
}

void SoakRun::advanceStep()
{
    const bool waiting = m_network.unfinishedReplies() > 0;
    qint64 step = std::uniform_int_distribution<qint64>(waiting ? 50 : 250, waiting ? 500 : 30'000)(m_stepRandom);
    // Land on the next planned moment rather than jump past it.
    QList<QDateTime> planned{m_nextActionAt, m_nextCalmAt, m_end};
    for (const Scheduled &scheduled : std::as_const(m_scheduled)) {
        planned.append(scheduled.due);
    }
    if (m_calm && m_calm->offlineUntil) {
        planned.append(*m_calm->offlineUntil);
    }
    for (const QDateTime &moment : std::as_const(planned)) {
        const qint64 until = now().msecsTo(moment);
        if (until > 0) {
            step = std::min(step, until);
        }
    }
    m_clock.advance(std::chrono::milliseconds(std::max<qint64>(step, 1)));
    settle();
    if (waiting) {
        // Held replies (delays, hangs) need real time to come back.
        waitRealTime(10);
        settle();
    }
}

bool SoakRun::settle()
{
    // Everything the store has sent reaches the server now, and every answer that the server does
    // not hold back on purpose comes back now, before virtual time moves on.
    const auto quiet = [this] {
        return m_network.allArrived() && m_network.unfinishedReplies() <= int(m_server->heldReplies());
    };
    const QDeadlineTimer deadline(5s);
    while (true) {
        QCoreApplication::processEvents();
        if (quiet()) {
            QCoreApplication::processEvents();
            if (quiet()) {
                noticeSavedKey();
                return true;
            }
        }
        if (deadline.hasExpired()) {
            ++m_counters.settleTimeouts;
            note(QStringLiteral("a local round trip took more than 5 real seconds"));
            return false;
        }
        waitRealTime(1);
    }
}

void SoakRun::waitRealTime(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QString SoakRun::elapsedText(const QDateTime &at) const
{
    const qint64 ms = m_start.msecsTo(at);
    const qint64 seconds = ms / 1000;
    return QString::asprintf("+%02lld:%02lld:%02lld.%03lld", seconds / 3600, (seconds % 3600) / 60, seconds % 60,
                             ms % 1000);
}

void SoakRun::note(const QString &text)
{
    m_log.add(QStringLiteral("[step %1 %2] %3").arg(m_counters.steps).arg(elapsedText(now()), text));
}

void SoakRun::fail(const QString &reason)
{
    if (m_failure) {
        return;
    }
    m_failure = QStringLiteral("%1 (seed %2, step %3, at %4)")
                    .arg(reason)
                    .arg(m_options.seed)
                    .arg(m_counters.steps)
                    .arg(elapsedText(now()));
    note(QStringLiteral("RULE BROKEN: ") + reason);
}

qint64 SoakRun::uniform(qint64 low, qint64 high)
{
    return std::uniform_int_distribution<qint64>(low, high)(m_random);
}

bool SoakRun::chance(double probability)
{
    return std::bernoulli_distribution(probability)(m_random);
}
