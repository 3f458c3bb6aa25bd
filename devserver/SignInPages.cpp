#include "SignInPages.h"

#include "AuthCodes.h"
#include "DemoData.h"
#include "DevServerConfig.h"
#include "HtmlPage.h"
#include "PkceVerifier.h"

#include <QUrl>
#include <QUrlQuery>

namespace {

const QString brand = QStringLiteral("<div class=\"brand\"><span class=\"mark\">&#9673;</span>Inkwarden</div>");

std::optional<QString> challengeProblem(const QString &challenge, const QString &method)
{
    if (challenge.isEmpty()) {
        return QStringLiteral("This sign-in link has no code challenge. Start the sign-in again from Inkwarden.");
    }
    if (!method.isEmpty() && method != QLatin1String("S256")) {
        return QStringLiteral("Only the S256 code challenge method is supported.");
    }
    if (!PkceVerifier::isWellFormedChallenge(challenge)) {
        return QStringLiteral("The code challenge is not a SHA-256 challenge. Start the sign-in again from Inkwarden.");
    }
    return std::nullopt;
}

QString hiddenField(const QString &name, const QString &value)
{
    return QStringLiteral("<input type=\"hidden\" name=\"%1\" value=\"%2\">").arg(name, HtmlPage::escape(value));
}

QUrl callback(const QList<QPair<QString, QString>> &items)
{
    QUrl url;
    url.setScheme(QStringLiteral("inkwarden"));
    url.setHost(QStringLiteral("authenticated"));
    QUrlQuery query;
    for (const auto &[key, value] : items) {
        if (!value.isEmpty()) {
            query.addQueryItem(key, QString::fromLatin1(QUrl::toPercentEncoding(value)));
        }
    }
    url.setQuery(query);
    return url;
}

} // namespace

SignInPages::SignInPages(const DevServerConfig &config, AuthCodes &codes)
    : m_config(config)
    , m_codes(codes)
{}

HttpReply SignInPages::problemPage(int status, const QString &message)
{
    const QString body = QStringLiteral("<section class=\"card\">%1<h1>Sign-in cannot continue</h1>"
                                        "<p class=\"error\">%2</p></section>")
                             .arg(brand, HtmlPage::escape(message));
    return HttpReply::html(HtmlPage::render(QStringLiteral("Inkwarden sign-in"), body), status);
}

HttpReply SignInPages::connectPage(const IncomingRequest &request) const
{
    if (request.method != QLatin1String("GET")) {
        return problemPage(405, QStringLiteral("Open this page with GET."));
    }
    const QString challenge = request.queryValue(QStringLiteral("code_challenge"));
    const QString state = request.queryValue(QStringLiteral("state"));
    if (const auto problem = challengeProblem(challenge, request.queryValue(QStringLiteral("code_challenge_method")))) {
        return problemPage(400, *problem);
    }

    QString accounts;
    for (const DemoAccount &account : DemoData::accounts()) {
        accounts += QStringLiteral("<li><span>%1</span><span class=\"muted\">%2 &middot; %3</span></li>")
                        .arg(HtmlPage::escape(account.displayName.value_or(account.id)),
                             HtmlPage::escape(account.accessType), HtmlPage::escape(account.currency));
    }
    const QString body =
        QStringLiteral("<section class=\"card\">%1"
                       "<h1>Connect Inkwarden</h1>"
                       "<p>Inkwarden on your computer asks to read the royalties of <strong>%2</strong>.</p>"
                       "<ul class=\"accounts\">%3</ul>"
                       "<form method=\"post\" action=\"%4\">%5%6"
                       "<div class=\"actions\">"
                       "<button type=\"submit\" name=\"decision\" value=\"cancel\">Cancel</button>"
                       "<button type=\"submit\" name=\"decision\" value=\"authorize\" class=\"primary\" autofocus>"
                       "Authorize</button></div></form></section>"
                       "<p class=\"muted\" style=\"margin-top:14px\">Inkwarden development server. The code it hands "
                       "to the app works once, within %7 minutes, and only with the app's own verifier.</p>")
            .arg(brand, HtmlPage::escape(DemoData::userEmail()), accounts,
                 HtmlPage::escape(m_config.basePath + authorizePath()),
                 hiddenField(QStringLiteral("code_challenge"), challenge), hiddenField(QStringLiteral("state"), state),
                 QString::number(AuthCodes::lifetimeSeconds / 60));
    return HttpReply::html(HtmlPage::render(QStringLiteral("Connect Inkwarden"), body));
}

HttpReply SignInPages::authorize(const IncomingRequest &request)
{
    if (request.method != QLatin1String("POST")) {
        return problemPage(405, QStringLiteral("The sign-in form is sent with POST."));
    }
    const QUrlQuery form = request.formFields();
    const QString challenge = form.queryItemValue(QStringLiteral("code_challenge"), QUrl::FullyDecoded);
    const QString state = form.queryItemValue(QStringLiteral("state"), QUrl::FullyDecoded);
    const QString decision = form.queryItemValue(QStringLiteral("decision"), QUrl::FullyDecoded);
    if (const auto problem = challengeProblem(challenge, {})) {
        return problemPage(400, *problem);
    }
    if (decision == QLatin1String("cancel")) {
        return HttpReply::redirect(
            callback({{QStringLiteral("error"), QStringLiteral("access_denied")}, {QStringLiteral("state"), state}}));
    }
    const QString code = m_codes.issue(challenge, state);
    return HttpReply::redirect(callback({{QStringLiteral("code"), code}, {QStringLiteral("state"), state}}));
}
