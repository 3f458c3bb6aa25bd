#include "PlatformTexts.h"
#include "RoyaltiesStore.h"
#include "model/Clock.h"
#include "model/RefreshInterval.h"

#include <algorithm>

// What the popover's views show: texts, choices and enabled states derived from the published
// state. The lists are the views' own models.

namespace {

QString accountName(const PublisherAccount &account)
{
    return account.displayName.value_or(account.userEmail);
}

} // namespace

bool RoyaltiesStore::wirePresentationSignals()
{
    const auto forward = [this](auto signal, auto presentationSignal) {
        QObject::connect(this, signal, this, presentationSignal);
    };
    for (const auto signal :
         {&RoyaltiesStore::latestAppVersionChanged, &RoyaltiesStore::isDownloadingUpdateChanged,
          &RoyaltiesStore::isCheckingForUpdatesChanged, &RoyaltiesStore::downloadedUpdateURLChanged}) {
        forward(signal, &RoyaltiesStore::updatePresentationChanged);
    }
    for (const auto signal : {&RoyaltiesStore::summaryChanged, &RoyaltiesStore::displayedRoyaltyChanged,
                              &RoyaltiesStore::salesMetricOrderChanged, &RoyaltiesStore::hiddenSalesMetricsChanged,
                              &RoyaltiesStore::errorMessageChanged, &RoyaltiesStore::isNetworkAvailableChanged}) {
        forward(signal, &RoyaltiesStore::figuresPresentationChanged);
    }
    for (const auto signal : {&RoyaltiesStore::accountsChanged, &RoyaltiesStore::isLoadingAccountsChanged,
                              &RoyaltiesStore::accountIDChanged}) {
        forward(signal, &RoyaltiesStore::accountPresentationChanged);
    }
    for (const auto signal : {&RoyaltiesStore::salesMetricOrderChanged, &RoyaltiesStore::hiddenSalesMetricsChanged}) {
        forward(signal, &RoyaltiesStore::salesMetricSettingsPresentationChanged);
    }
    return true;
}

QString RoyaltiesStore::updateBannerTitle() const
{
    return QStringLiteral("Inkwarden ") + m_latestAppVersion.value_or(QString()) + QStringLiteral(" is available");
}

QString RoyaltiesStore::updateBannerSubtitle() const
{
    return QStringLiteral("You have version ") + currentAppVersion();
}

QString RoyaltiesStore::updatePromptTitle() const
{
    return updateBannerTitle();
}

QString RoyaltiesStore::updatePromptMessage() const
{
    return QStringLiteral("You are using version ") + currentAppVersion() + QStringLiteral(". ")
           + PlatformTexts::downloadUpdateQuestion();
}

QString RoyaltiesStore::showInFilesTitle()
{
    return PlatformTexts::showInFileManager();
}

QString RoyaltiesStore::appVersionTitle() const
{
    return QStringLiteral("Inkwarden ") + currentAppVersion();
}

QString RoyaltiesStore::versionLine() const
{
    return QStringLiteral("Version ") + currentAppVersion();
}

QVariant RoyaltiesStore::versionStatusText() const
{
    if (isUpdateAvailable()) {
        return QString(QStringLiteral("Version ") + *m_latestAppVersion + QStringLiteral(" is available"));
    }
    if (m_latestAppVersion) {
        return QStringLiteral(u"You\u2019re up to date");
    }
    // No check has answered yet: no status line at all.
    return {};
}

QString RoyaltiesStore::versionStatusColor() const
{
    return isUpdateAvailable() ? QStringLiteral("orange") : QStringLiteral("green");
}

QString RoyaltiesStore::checkForUpdatesTitle() const
{
    return m_isCheckingForUpdates ? QStringLiteral(u"Checking\u2026") : QStringLiteral("Check for updates");
}

QString RoyaltiesStore::installUpdateTitle() const
{
    return m_isDownloadingUpdate ? QStringLiteral(u"Downloading\u2026") : QStringLiteral("Install update");
}

QVariant RoyaltiesStore::periodCooldownCaption() const
{
    if (m_requestCooldownRemaining < 1) {
        return {};
    }
    return QString(QStringLiteral("Period selection available in ") + QString::number(m_requestCooldownRemaining)
                   + QStringLiteral("s"));
}

QString RoyaltiesStore::statusIndicatorColor() const
{
    // An error always shows orange, even with the network there.
    if (m_errorMessage || !m_isNetworkAvailable) {
        return QStringLiteral("orange");
    }
    return QStringLiteral("green");
}

QString RoyaltiesStore::displayedRoyaltyCaption() const
{
    return m_displayedRoyalty.title().toUpper();
}

QString RoyaltiesStore::highlightedRoyaltyText() const
{
    return money(highlightedRoyalty(), false);
}

QString RoyaltiesStore::signInButtonTitle() const
{
    return m_isAuthenticating ? QStringLiteral(u"Waiting for browser sign-in\u2026")
                              : QStringLiteral("Sign in with Inkwarden");
}

QString RoyaltiesStore::connectButtonTitle() const
{
    return m_isLoading ? QStringLiteral(u"Connecting\u2026") : QStringLiteral("Connect with API key");
}

QString RoyaltiesStore::apiKeyHint()
{
    return PlatformTexts::apiKeyStorageNote();
}

QString RoyaltiesStore::accountRowForm() const
{
    if (m_isLoadingAccounts) {
        return QStringLiteral("loading");
    }
    if (m_accounts.size() >= 2) {
        return QStringLiteral("picker");
    }
    return m_accounts.size() == 1 ? QStringLiteral("single") : QStringLiteral("none");
}

QVariant RoyaltiesStore::accountHint() const
{
    if (m_isLoadingAccounts) {
        return QStringLiteral("Loading accounts authorized by this API key");
    }
    if (m_accounts.isEmpty()) {
        return QStringLiteral("Account details could not be loaded");
    }
    return {};
}

int RoyaltiesStore::selectedAccountIndex() const
{
    const auto found = std::find_if(m_accounts.cbegin(), m_accounts.cend(), [this](const PublisherAccount &account) {
        return account.accountID == m_accountID;
    });
    return found == m_accounts.cend() ? -1 : int(std::distance(m_accounts.cbegin(), found));
}

QString RoyaltiesStore::singleAccountName() const
{
    return m_accounts.size() == 1 ? accountName(m_accounts.first()) : QString();
}

int RoyaltiesStore::displayedRoyaltyIndex() const
{
    return int(m_displayedRoyalty.value());
}

QVariantList RoyaltiesStore::refreshIntervalChoices()
{
    const QStringList texts{QStringLiteral("Every 30 minutes"), QStringLiteral("Every hour"),
                            QStringLiteral("Every 2 hours"), QStringLiteral("Every 3 hours")};
    QVariantList choices;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        choices.append(QVariantMap{{QStringLiteral("text"), texts.at(i)},
                                   {QStringLiteral("minutes"), RefreshInterval::offeredMinutes.at(size_t(i))}});
    }
    return choices;
}

int RoyaltiesStore::refreshIntervalIndex() const
{
    const auto &offered = RefreshInterval::offeredMinutes;
    const auto found = std::find(offered.cbegin(), offered.cend(), m_refreshMinutes);
    return found == offered.cend() ? -1 : int(std::distance(offered.cbegin(), found));
}

QString RoyaltiesStore::startAutomaticallyHint() const
{
    return m_launchAtLoginRequiresApproval ? PlatformTexts::loginApprovalRequired()
                                           : PlatformTexts::launchAtLoginExplanation();
}

QString RoyaltiesStore::loginApprovalNotice()
{
    return PlatformTexts::loginRegisteredButNotApproved();
}

QString RoyaltiesStore::openLoginItemsSettingsTitle()
{
    return PlatformTexts::openLoginItemsSettings();
}

void RoyaltiesStore::performUpdateAction()
{
    if (m_downloadedUpdateURL) {
        openDownloadedUpdate();
    } else {
        downloadLatestUpdate();
    }
}

QDateTime RoyaltiesStore::presentationNow() const
{
    return m_environment.clock.now();
}

std::unique_ptr<ClockTimer> RoyaltiesStore::startPresentationTimer(std::chrono::milliseconds interval,
                                                                   std::function<void()> callback)
{
    return m_environment.clock.startTimer(interval, true, std::move(callback));
}
