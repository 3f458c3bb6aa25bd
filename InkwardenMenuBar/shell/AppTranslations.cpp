#include "AppTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace {

// Where the build puts the compiled translations, inkwarden_<language>.qm.
const QString translationsFolder = QStringLiteral(":/i18n");

bool isEnglish(const QLocale &locale)
{
    return locale.language() == QLocale::English || locale.language() == QLocale::C;
}

} // namespace

AppTranslations::AppTranslations(const QStringList &uiLanguages)
{
    for (const QString &name : uiLanguages) {
        const QLocale locale(name);
        // The user prefers English to every language after it: the texts as written are theirs.
        if (isEnglish(locale)) {
            return;
        }
        if (m_inkwarden.load(locale, QStringLiteral("inkwarden"), QStringLiteral("_"), translationsFolder)) {
            QCoreApplication::installTranslator(&m_inkwarden);
            // Qt's own texts (such as the command line's "Displays help on commandline options.")
            // come from the system's qt6-translations-l10n, when it is there.
            if (m_qt.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
                QCoreApplication::installTranslator(&m_qt);
            }
            m_language = QLocale::languageToCode(locale.language());
            return;
        }
    }
}

AppTranslations::~AppTranslations()
{
    QCoreApplication::removeTranslator(&m_qt);
    QCoreApplication::removeTranslator(&m_inkwarden);
}
