#pragma once

#include "StoreViewModel.h"

#include <QString>

// The connect view's button titles and hints.
class ConnectViewModel : public StoreViewModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString signInButtonTitle READ signInButtonTitle NOTIFY changed)
    Q_PROPERTY(QString connectButtonTitle READ connectButtonTitle NOTIFY changed)
    Q_PROPERTY(QString builtInServerURLText READ builtInServerURLText CONSTANT)
    Q_PROPERTY(QString apiKeyHint READ apiKeyHint CONSTANT)
    Q_PROPERTY(QString versionLine READ versionLine NOTIFY changed)

public:
    explicit ConnectViewModel(QObject *parent = nullptr);

    QString signInButtonTitle() const;
    QString connectButtonTitle() const;
    static QString builtInServerURLText();
    static QString apiKeyHint();
    QString versionLine() const;
};
