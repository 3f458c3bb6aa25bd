#include "DesktopServices.h"
#include "Preferences.h"
#include "RoyaltiesStore.h"
#include "SecretStore.h"
#include "SettingsKeys.h"
#include "service/ServerAddress.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QUrlQuery>
#include <QUuid>

namespace {

const QString connectPagePath = QStringLiteral("/mac-app/connect/");

QString noAccountsMessage()
{
    return QStringLiteral("This API key does not have access to any accounts.");
}

// The host of a URL as it is written; QUrl would lower-case it, and the callback's host must match
// exactly.
QStringView writtenHost(QStringView url)
{
    const qsizetype authorityStart = url.indexOf(u"://");
    if (authorityStart < 0) {
        return {};
    }
    QStringView authority = url.mid(authorityStart + 3);
    const qsizetype authorityEnd = authority.indexOf(QRegularExpression(QStringLiteral("[/?#]")));
    if (authorityEnd >= 0) {
        authority = authority.left(authorityEnd);
    }
    const qsizetype userInfoEnd = authority.lastIndexOf(u'@');
    if (userInfoEnd >= 0) {
        authority = authority.mid(userInfoEnd + 1);
    }
    const qsizetype portStart = authority.lastIndexOf(u':');
    return portStart >= 0 ? authority.left(portStart) : authority;
}

// The value of the first query item named `name`; none when the item is missing or has no value.
std::optional<QString> firstQueryValue(const QUrl &url, const QString &name)
{
    const QList<QPair<QString, QString>> items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    for (const auto &[key, value] : items) {
        if (key == name) {
            return value.isEmpty() ? std::nullopt : std::optional<QString>(value);
        }
    }
    return std::nullopt;
}

} // namespace

QString RoyaltiesStore::newPkceValue()
{
    const auto dashless = [] { return QUuid::createUuid().toString(QUuid::Id128).toUpper(); };
    return dashless() + dashless();
}

QString RoyaltiesStore::codeChallenge(const QString &verifier)
{
    const QByteArray digest = QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

void RoyaltiesStore::beginBrowserAuthentication()
{
    setErrorMessage(std::nullopt);
    const QString verifier = newPkceValue();
    const QString challenge = codeChallenge(verifier);
    const QString state = newPkceValue();
    const std::optional<QUrl> url = makeServerURL(
        connectPagePath, {{QStringLiteral("code_challenge"), challenge}, {QStringLiteral("state"), state}});
    if (!url) {
        setErrorMessage(QStringLiteral("Enter a valid Inkwarden server URL."));
        return;
    }
    m_environment.preferences.setString(SettingsKeys::pendingAuthVerifier, verifier);
    m_environment.preferences.setString(SettingsKeys::pendingAuthState, state);
    setIsAuthenticating(true);
    m_environment.desktop.openURL(*url);
}

void RoyaltiesStore::handleAuthenticationCallback(const QString &urlText)
{
    const QUrl url(urlText, QUrl::StrictMode);
    const qsizetype schemeEnd = urlText.indexOf(u':');
    const bool isCallback = url.isValid() && schemeEnd > 0 && QStringView(urlText).left(schemeEnd) == u"inkwarden"
                            && writtenHost(urlText) == u"authenticated";
    const std::optional<QString> code = isCallback ? firstQueryValue(url, QStringLiteral("code")) : std::nullopt;
    const std::optional<QString> state = isCallback ? firstQueryValue(url, QStringLiteral("state")) : std::nullopt;
    if (!code || !state) {
        setErrorMessage(QStringLiteral("Inkwarden received an invalid sign-in response."));
        return;
    }

    const std::optional<QString> pendingState = m_environment.preferences.string(SettingsKeys::pendingAuthState);
    const std::optional<QString> pendingVerifier = m_environment.preferences.string(SettingsKeys::pendingAuthVerifier);
    if (!pendingState || !pendingVerifier || *pendingState != *state) {
        setErrorMessage(QStringLiteral("This sign-in response does not match the current request. Please try again."));
        return;
    }

    setIsAuthenticating(true);
    setIsLoading(true);
    exchangeCode(*code, *pendingVerifier);
}

QCoro::Task<> RoyaltiesStore::exchangeCode(QString code, QString verifier)
{
    const std::shared_ptr<const bool> alive = m_alive;
    const ServiceResult<MacAuthExchangeResponse> exchanged =
        co_await m_service.exchangeAuthenticationCode(m_serverURL, code, verifier);
    if (!*alive) {
        co_return;
    }
    if (!exchanged) {
        setIsAuthenticating(false);
        setIsLoading(false);
        setErrorMessage(friendlyMessage(exchanged.error()));
        co_return;
    }

    setApiKey(exchanged.value().apiKey);
    const std::optional<RoyaltiesError> saveError = co_await m_environment.secrets.saveAPIKey(m_apiKey);
    if (!*alive) {
        co_return;
    }
    setIsAuthenticating(false);
    setIsLoading(false);
    if (saveError) {
        setErrorMessage(saveError->errorDescription());
        co_return;
    }
    m_environment.preferences.remove(SettingsKeys::pendingAuthVerifier);
    m_environment.preferences.remove(SettingsKeys::pendingAuthState);
    connect();
}

void RoyaltiesStore::connect()
{
    setErrorMessage(std::nullopt);
    const QString key = m_apiKey.trimmed();
    if (key.isEmpty()) {
        setErrorMessage(RoyaltiesError::missingAPIKey().errorDescription());
        return;
    }
    setIsLoading(true);
    performConnect(key);
}

QCoro::Task<> RoyaltiesStore::performConnect(QString key)
{
    const std::shared_ptr<const bool> alive = m_alive;
    const ServiceResult<AccountsResponse> response = co_await m_service.fetchAccounts(m_serverURL, key);
    if (!*alive) {
        co_return;
    }
    const std::optional<QString> failure = [&]() -> std::optional<QString> {
        if (!response) {
            return friendlyMessage(response.error());
        }
        if (response.value().accounts.isEmpty()) {
            return noAccountsMessage();
        }
        return std::nullopt;
    }();
    if (failure) {
        setIsLoading(false);
        setErrorMessage(*failure);
        co_return;
    }

    setLatestAppVersion(response.value().latestAppVersion);
    presentUpdatePromptIfNeeded();
    adoptAccounts(response.value());

    const std::optional<RoyaltiesError> saveError = co_await m_environment.secrets.saveAPIKey(key);
    if (!*alive) {
        co_return;
    }
    if (saveError) {
        setIsLoading(false);
        setErrorMessage(saveError->errorDescription());
        co_return;
    }
    persistSettings();
    ++m_connectionGeneration;
    setIsConnected(true);
    setIsShowingSettings(false);
    setIsLoading(false);
    refresh();
}

void RoyaltiesStore::adoptAccounts(const AccountsResponse &response)
{
    setAccounts(response.accounts);
    const bool chosenAccountListed =
        std::any_of(response.accounts.cbegin(), response.accounts.cend(),
                    [this](const PublisherAccount &a) { return a.accountID == m_accountID; });
    if (!chosenAccountListed) {
        setAccountID(response.accounts.first().accountID);
    }
}

void RoyaltiesStore::loadAccounts()
{
    if (!m_isConnected || m_isLoadingAccounts) {
        return;
    }
    setIsLoadingAccounts(true);
    performLoadAccounts();
}

QCoro::Task<> RoyaltiesStore::performLoadAccounts()
{
    const std::shared_ptr<const bool> alive = m_alive;
    // Named, not a temporary: g++ 12 destroys temporaries of a co_await expression twice.
    const QString key = m_apiKey.trimmed();
    const ServiceResult<AccountsResponse> response = co_await m_service.fetchAccounts(m_serverURL, key);
    if (!*alive) {
        co_return;
    }
    if (!response || response.value().accounts.isEmpty()) {
        setIsLoadingAccounts(false);
        setErrorMessage(response ? noAccountsMessage() : friendlyMessage(response.error()));
        co_return;
    }
    setLatestAppVersion(response.value().latestAppVersion);
    presentUpdatePromptIfNeeded();
    const QString previousAccountID = m_accountID;
    adoptAccounts(response.value());
    if (m_accountID != previousAccountID) {
        persistSettings();
        refresh();
    }
    setIsLoadingAccounts(false);
}

std::optional<QUrl> RoyaltiesStore::makeServerURL(const QString &path,
                                                  const RoyaltiesService::QueryItems &queryItems) const
{
    const ServiceResult<QUrl> url = RoyaltiesService::makeURL(m_serverURL, path, queryItems);
    if (!url || url.value().host().isEmpty()) {
        return std::nullopt;
    }
    return url.value();
}

std::optional<QUrl> RoyaltiesStore::makeServerPageURL(const QString &path) const
{
    QUrl url(m_serverURL.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) {
        return std::nullopt;
    }
    url.setPath(ServerAddress::pagePath(url.path(), path));
    url.setQuery(QString());
    url.setFragment(QString());
    if (!url.isValid()) {
        return std::nullopt;
    }
    return url;
}
