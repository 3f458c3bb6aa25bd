#pragma once

#include <QLocale>
#include <QStringList>
#include <QTranslator>

// Inkwarden in the user's language: its own translation and Qt's (the standard dialog and
// command-line texts) for the first of the user's UI languages that Inkwarden speaks. English is the
// language the texts are written in, so an English desktop, or one whose languages Inkwarden has no
// translation for, loads nothing; a text missing from a translation stays English.
// Installed into the application while the object lives; make it right after the application object.
class AppTranslations
{
public:
    explicit AppTranslations(const QStringList &uiLanguages = QLocale::system().uiLanguages());
    ~AppTranslations();

    AppTranslations(const AppTranslations &) = delete;
    AppTranslations &operator=(const AppTranslations &) = delete;

    // The language whose translation is installed, such as "de" or "ja"; empty for English.
    [[nodiscard]] QString language() const { return m_language; }

private:
    QTranslator m_inkwarden;
    QTranslator m_qt;
    QString m_language;
};
