#include "BrowserSignIn.h"

#include "ConnectionSession.h"
#include "DesktopServices.h"
#include "SecretStore.h"
#include "ServerPages.h"
#include "StoreSettings.h"
#include "StoreStatus.h"
#include "service/RoyaltiesService.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QUrlQuery>
#include <QUuid>

namespace {

const QString connectPagePath = QStringLiteral("/mac-app/connect/");

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

BrowserSignIn::BrowserSignIn(Environment environment, QObject *parent)
    : QObject(parent)
    , m_environment(environment)
{}

BrowserSignIn::~BrowserSignIn() = default;

void BrowserSignIn::setIsAuthenticating(bool value)
{
    m_isAuthenticating = value;
    Q_EMIT isAuthenticatingChanged();
}

QString BrowserSignIn::newPkceValue()
{
    const auto dashless = [] { return QUuid::createUuid().toString(QUuid::Id128).toUpper(); };
    return dashless() + dashless();
}

QString BrowserSignIn::codeChallenge(const QString &verifier)
{
    const QByteArray digest = QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

void BrowserSignIn::begin()
{
    m_environment.status.setErrorMessage(std::nullopt);
    const QString verifier = newPkceValue();
    const QString challenge = codeChallenge(verifier);
    const QString state = newPkceValue();
    const std::optional<QUrl> url =
        ServerPages::url(m_environment.settings.serverURL(), connectPagePath,
                         {{QStringLiteral("code_challenge"), challenge}, {QStringLiteral("state"), state}});
    if (!url) {
        m_environment.status.setErrorMessage(tr("Enter a valid Inkwarden server URL."));
        return;
    }
    m_environment.settings.setPendingSignIn(StoreSettings::PendingSignIn{verifier, state});
    setIsAuthenticating(true);
    m_environment.desktop.openURL(*url);
}

void BrowserSignIn::handleCallback(const QString &urlText)
{
    const QUrl url(urlText, QUrl::StrictMode);
    const qsizetype schemeEnd = urlText.indexOf(u':');
    const bool isCallback = url.isValid() && schemeEnd > 0 && QStringView(urlText).left(schemeEnd) == u"inkwarden"
                            && writtenHost(urlText) == u"authenticated";
    const std::optional<QString> code = isCallback ? firstQueryValue(url, QStringLiteral("code")) : std::nullopt;
    const std::optional<QString> state = isCallback ? firstQueryValue(url, QStringLiteral("state")) : std::nullopt;
    if (!code || !state) {
        m_environment.status.setErrorMessage(tr("Inkwarden received an invalid sign-in response."));
        return;
    }

    const std::optional<StoreSettings::PendingSignIn> pending = m_environment.settings.pendingSignIn();
    if (!pending || pending->state != *state) {
        m_environment.status.setErrorMessage(
            tr("This sign-in response does not match the current request. Please try again."));
        return;
    }

    setIsAuthenticating(true);
    m_environment.session.setIsLoading(true);
    exchangeCode(*code, pending->verifier);
}

QCoro::Task<> BrowserSignIn::exchangeCode(QString code, QString verifier)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const ServiceResult<MacAuthExchangeResponse> exchanged =
        co_await m_environment.service.exchangeAuthenticationCode(m_environment.settings.serverURL(), code, verifier);
    if (!*alive) {
        co_return;
    }
    if (!exchanged) {
        setIsAuthenticating(false);
        m_environment.session.setIsLoading(false);
        m_environment.status.setErrorMessage(ConnectionSession::friendlyMessage(exchanged.error()));
        co_return;
    }

    m_environment.session.setApiKey(exchanged.value().apiKey);
    const std::optional<RoyaltiesError> saveError =
        co_await m_environment.secrets.saveAPIKey(m_environment.session.apiKey());
    if (!*alive) {
        co_return;
    }
    setIsAuthenticating(false);
    m_environment.session.setIsLoading(false);
    if (saveError) {
        m_environment.status.setErrorMessage(saveError->errorDescription());
        co_return;
    }
    m_environment.settings.setPendingSignIn(std::nullopt);
    m_environment.session.connect();
}
