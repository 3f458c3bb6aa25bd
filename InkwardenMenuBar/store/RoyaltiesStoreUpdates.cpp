#include "RoyaltiesStore.h"
#include "VersionComparison.h"

QString RoyaltiesStore::currentAppVersion() const
{
    return m_environment.appInfo.version.value_or(QStringLiteral("Unknown"));
}

bool RoyaltiesStore::isUpdateAvailable() const
{
    const QString current = currentAppVersion();
    return m_latestAppVersion && current != u"Unknown" && compareVersions(*m_latestAppVersion, current) > 0;
}

void RoyaltiesStore::presentUpdatePromptIfNeeded()
{
    if (!isUpdateAvailable() || m_promptedUpdateVersion == m_latestAppVersion) {
        return;
    }
    m_promptedUpdateVersion = m_latestAppVersion;
    setIsShowingUpdatePrompt(true);
}
