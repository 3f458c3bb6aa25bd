#pragma once

#include <QObject>
#include <QString>

#include <optional>

// What the popover shows beside the figures and the settings: the one error message, which every
// flow sets and clears, and whether the settings page is open.
class StoreStatus : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    void setErrorMessage(std::optional<QString> value);
    bool isShowingSettings() const { return m_isShowingSettings; }
    void setIsShowingSettings(bool value);

Q_SIGNALS:
    void errorMessageChanged();
    void isShowingSettingsChanged();

private:
    std::optional<QString> m_errorMessage;
    bool m_isShowingSettings = false;
};
