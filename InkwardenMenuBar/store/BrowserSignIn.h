#pragma once

#include "Lifetime.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <optional>

class ConnectionSession;
class DesktopServices;
class RoyaltiesService;
class SecretStore;
class StoreSettings;
class StoreStatus;

// The sign-in through the browser: opens the server's connect page with a PKCE challenge, takes
// the inkwarden:// callback, exchanges its code for an API key, keeps the key in the keyring and
// connects with it.
class BrowserSignIn : public QObject
{
    Q_OBJECT

public:
    struct Environment {
        RoyaltiesService &service;
        SecretStore &secrets;
        DesktopServices &desktop;
        StoreSettings &settings;
        StoreStatus &status;
        ConnectionSession &session;
    };
    explicit BrowserSignIn(Environment environment, QObject *parent = nullptr);
    ~BrowserSignIn() override;

    bool isAuthenticating() const { return m_isAuthenticating; }
    void setIsAuthenticating(bool value);

    // Opens the connect page of the server the settings name.
    void begin();
    void handleCallback(const QString &url);

    static QString codeChallenge(const QString &verifier);

Q_SIGNALS:
    void isAuthenticatingChanged();

private:
    static QString newPkceValue();
    QCoro::Task<> exchangeCode(QString code, QString verifier);

    Environment m_environment;
    bool m_isAuthenticating = false;
    Lifetime m_lifetime;
};
