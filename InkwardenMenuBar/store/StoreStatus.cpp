#include "StoreStatus.h"

void StoreStatus::setErrorMessage(std::optional<QString> value)
{
    m_errorMessage = std::move(value);
    Q_EMIT errorMessageChanged();
}

void StoreStatus::setIsShowingSettings(bool value)
{
    m_isShowingSettings = value;
    Q_EMIT isShowingSettingsChanged();
}
