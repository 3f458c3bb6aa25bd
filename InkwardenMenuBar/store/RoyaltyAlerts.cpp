#include "RoyaltyAlerts.h"

#include "ConnectionSession.h"
#include "DesktopNotifications.h"
#include "Preferences.h"
#include "SettingsKeys.h"
#include "StoreSettings.h"
#include "model/Clock.h"
#include "model/MoneyFormatter.h"

namespace {

const QString timeFormat = QStringLiteral("HH:mm");

std::optional<QTime> timeFrom(const std::optional<QString> &text)
{
    if (!text) {
        return std::nullopt;
    }
    const QTime time = QTime::fromString(text->trimmed(), timeFormat);
    return time.isValid() ? std::optional<QTime>(time) : std::nullopt;
}

// Less than half a cent is no new royalty: it is how a sum of floating amounts wobbles.
constexpr double smallestIncrease = 0.005;

} // namespace

RoyaltyAlerts::RoyaltyAlerts(Environment environment, QObject *parent)
    : QObject(parent)
    , m_environment(environment)
{
    const Preferences &preferences = m_environment.preferences;
    m_notifyOnNewRoyalties = preferences.boolean(SettingsKeys::notifyOnNewRoyalties).value_or(true);
    m_notificationSound = preferences.boolean(SettingsKeys::notificationSound).value_or(false);
    m_quietHoursEnabled = preferences.boolean(SettingsKeys::quietHoursEnabled).value_or(false);
    m_quietHoursStart = timeFrom(preferences.string(SettingsKeys::quietHoursStart)).value_or(defaultQuietHoursStart());
    m_quietHoursEnd = timeFrom(preferences.string(SettingsKeys::quietHoursEnd)).value_or(defaultQuietHoursEnd());
    m_quietHoursSummary = preferences.boolean(SettingsKeys::quietHoursSummary).value_or(true);
}

RoyaltyAlerts::~RoyaltyAlerts() = default;

QString RoyaltyAlerts::quietHoursStartText() const
{
    return m_quietHoursStart.toString(timeFormat);
}

QString RoyaltyAlerts::quietHoursEndText() const
{
    return m_quietHoursEnd.toString(timeFormat);
}

void RoyaltyAlerts::setNotifyOnNewRoyalties(bool value)
{
    m_notifyOnNewRoyalties = value;
    m_environment.preferences.setBoolean(SettingsKeys::notifyOnNewRoyalties, value);
    if (!value) {
        // Switched off: what quiet hours held back is not told later either.
        m_held = 0;
        m_heldPeriod.reset();
        m_releaseTimer.reset();
    }
    Q_EMIT changed();
}

void RoyaltyAlerts::setNotificationSound(bool value)
{
    m_notificationSound = value;
    m_environment.preferences.setBoolean(SettingsKeys::notificationSound, value);
    Q_EMIT changed();
}

void RoyaltyAlerts::setQuietHoursEnabled(bool value)
{
    m_quietHoursEnabled = value;
    m_environment.preferences.setBoolean(SettingsKeys::quietHoursEnabled, value);
    scheduleRelease();
    Q_EMIT changed();
}

void RoyaltyAlerts::setQuietHoursStart(QTime value)
{
    if (!value.isValid()) {
        return;
    }
    m_quietHoursStart = QTime(value.hour(), value.minute());
    m_environment.preferences.setString(SettingsKeys::quietHoursStart, quietHoursStartText());
    scheduleRelease();
    Q_EMIT changed();
}

void RoyaltyAlerts::setQuietHoursEnd(QTime value)
{
    if (!value.isValid()) {
        return;
    }
    m_quietHoursEnd = QTime(value.hour(), value.minute());
    m_environment.preferences.setString(SettingsKeys::quietHoursEnd, quietHoursEndText());
    scheduleRelease();
    Q_EMIT changed();
}

void RoyaltyAlerts::setQuietHoursStartText(const QString &value)
{
    if (const std::optional<QTime> time = timeFrom(value)) {
        setQuietHoursStart(*time);
    }
}

void RoyaltyAlerts::setQuietHoursEndText(const QString &value)
{
    if (const std::optional<QTime> time = timeFrom(value)) {
        setQuietHoursEnd(*time);
    }
}

void RoyaltyAlerts::setQuietHoursSummary(bool value)
{
    m_quietHoursSummary = value;
    m_environment.preferences.setBoolean(SettingsKeys::quietHoursSummary, value);
    Q_EMIT changed();
}

bool RoyaltyAlerts::isQuietAt(QTime time) const
{
    if (!m_quietHoursEnabled || m_quietHoursStart == m_quietHoursEnd) {
        return false;
    }
    if (m_quietHoursStart < m_quietHoursEnd) {
        return time >= m_quietHoursStart && time < m_quietHoursEnd;
    }
    // Over midnight: from the evening to the morning.
    return time >= m_quietHoursStart || time < m_quietHoursEnd;
}

void RoyaltyAlerts::figuresRefreshed(const QString &accountID, RoyaltyPeriod period)
{
    const RoyaltySummary &summary = m_environment.session.summary();
    const std::optional<Seen> previous = std::exchange(m_lastSeen, Seen{accountID, period, summary});
    // Yesterday is finished: its figures only change when the server corrects them.
    if (!previous || previous->accountID != accountID || !(previous->period == period)
        || period == RoyaltyPeriod::yesterday) {
        return;
    }
    const DisplayedRoyalty displayed = m_environment.settings.displayedRoyalty();
    const double increase = MoneyFormatter::highlightedRoyalty(summary, displayed)
                            - MoneyFormatter::highlightedRoyalty(previous->summary, displayed);
    if (increase < smallestIncrease || !m_notifyOnNewRoyalties) {
        return;
    }
    if (isQuietAt(m_environment.clock.now().toLocalTime().time())) {
        holdUntilQuietHoursEnd(increase, period);
        return;
    }
    announce(increase, period);
}

void RoyaltyAlerts::announce(double increase, RoyaltyPeriod period)
{
    DesktopNotifications::Notification notification;
    notification.withSound = m_notificationSound;
    if (m_environment.settings.hideAmounts()) {
        //: The title of a desktop notification when the amounts are hidden
        notification.title = tr("New royalties");
        notification.body = period.title();
    } else {
        const ConnectionSession &session = m_environment.session;
        //: The title of a desktop notification; %1 is the amount earned since the last refresh, such as
        //: $12.50
        notification.title = tr("+%1 in royalties").arg(session.money(increase, false));
        // The figure as the dashboard shows it, when the refreshed period is the one on show.
        notification.body = period.title();
        if (m_lastSeen && m_lastSeen->period == period) {
            const double figure =
                MoneyFormatter::highlightedRoyalty(m_lastSeen->summary, m_environment.settings.displayedRoyalty());
            //: The body of a desktop notification: %1 is the period, such as "Today", %2 its royalties
            notification.body =
                tr("%1: %2").arg(notification.body, session.money(figure, m_lastSeen->summary.currency, false));
        }
    }
    m_environment.notifications.show(notification);
}

void RoyaltyAlerts::holdUntilQuietHoursEnd(double increase, RoyaltyPeriod period)
{
    if (!m_quietHoursSummary) {
        return;
    }
    if (m_heldPeriod && !(*m_heldPeriod == period)) {
        // Another period's increases do not add up with these.
        m_held = 0;
    }
    m_held += increase;
    m_heldPeriod = period;
    scheduleRelease();
}

void RoyaltyAlerts::scheduleRelease()
{
    m_releaseTimer.reset();
    if (!m_heldPeriod) {
        return;
    }
    const QDateTime now = m_environment.clock.now().toLocalTime();
    if (!isQuietAt(now.time())) {
        releaseHeld();
        return;
    }
    QDateTime end = now;
    end.setTime(m_quietHoursEnd);
    if (end <= now) {
        end = end.addDays(1);
    }
    m_releaseTimer = m_environment.clock.startTimer(std::chrono::milliseconds(now.msecsTo(end)), false, [this] {
        m_releaseTimer.reset();
        releaseHeld();
    });
}

void RoyaltyAlerts::releaseHeld()
{
    const std::optional<RoyaltyPeriod> period = std::exchange(m_heldPeriod, std::nullopt);
    const double held = std::exchange(m_held, 0);
    if (period && held >= smallestIncrease && m_quietHoursSummary && m_notifyOnNewRoyalties) {
        announce(held, *period);
    }
}
