#pragma once

#include "StoreViewModel.h"

#include <QString>
#include <QVariant>
#include <QVariantList>

// The settings view's hints, the form of its account row and the choices of its pickers.
class SettingsViewModel : public StoreViewModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString apiKeyHint READ apiKeyHint CONSTANT)
    Q_PROPERTY(QString accountRowForm READ accountRowForm NOTIFY changed)
    Q_PROPERTY(QVariant accountHint READ accountHint NOTIFY changed)
    Q_PROPERTY(int selectedAccountIndex READ selectedAccountIndex NOTIFY changed)
    Q_PROPERTY(QString singleAccountName READ singleAccountName NOTIFY changed)
    Q_PROPERTY(QVariantList refreshIntervalChoices READ refreshIntervalChoices CONSTANT)
    Q_PROPERTY(int refreshIntervalIndex READ refreshIntervalIndex NOTIFY changed)
    Q_PROPERTY(QString startAutomaticallyHint READ startAutomaticallyHint NOTIFY changed)
    Q_PROPERTY(QString loginApprovalNotice READ loginApprovalNotice CONSTANT)
    Q_PROPERTY(QString openLoginItemsSettingsTitle READ openLoginItemsSettingsTitle CONSTANT)
    Q_PROPERTY(QStringList quietHoursChoices READ quietHoursChoices CONSTANT)
    Q_PROPERTY(int quietHoursStartIndex READ quietHoursStartIndex NOTIFY changed)
    Q_PROPERTY(int quietHoursEndIndex READ quietHoursEndIndex NOTIFY changed)

public:
    explicit SettingsViewModel(QObject *parent = nullptr);

    static QString apiKeyHint();
    // "loading", "picker" (two or more accounts), "single" or "none".
    QString accountRowForm() const;
    // None once the accounts are there.
    QVariant accountHint() const;
    int selectedAccountIndex() const;
    QString singleAccountName() const;
    // Each choice a map of "text" and "minutes".
    static QVariantList refreshIntervalChoices();
    int refreshIntervalIndex() const;
    QString startAutomaticallyHint() const;
    static QString loginApprovalNotice();
    static QString openLoginItemsSettingsTitle();
    // The times quiet hours can start and end at: every half hour, "00:00" to "23:30".
    static QStringList quietHoursChoices();
    // Where the chosen times are among the choices; -1 for a time between two (set by hand).
    int quietHoursStartIndex() const;
    int quietHoursEndIndex() const;

protected:
    QList<QMetaObject::Connection> watchParts(RoyaltiesStore &store) override;
};
