#pragma once

#include <QDateTime>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <optional>

// Inkwarden's settings file: an INI file of plain keys. Values come back as text after a restart,
// so every read parses the text; a value that does not parse reads as absent.
class Preferences
{
public:
    explicit Preferences(const QString &filePath = defaultFilePath());

    // $XDG_CONFIG_HOME/inkwarden/inkwarden.conf
    static QString defaultFilePath();

    QString filePath() const { return m_settings.fileName(); }
    // Where an unreadable settings file was moved aside at start, if it was.
    const std::optional<QString> &setAsideFile() const { return m_setAsideFile; }

    bool contains(const QString &key) const { return m_settings.contains(key); }
    std::optional<QString> string(const QString &key) const;
    std::optional<qint64> integer(const QString &key) const;
    // "true" or "false"; anything else reads as absent.
    std::optional<bool> boolean(const QString &key) const;
    std::optional<QStringList> stringList(const QString &key) const;
    std::optional<QDateTime> date(const QString &key) const;

    void setString(const QString &key, const QString &value);
    void setInteger(const QString &key, qint64 value);
    void setBoolean(const QString &key, bool value);
    void setStringList(const QString &key, const QStringList &value);
    void setDate(const QString &key, const QDateTime &value);
    // Values that only make sense together reach the file in one write, never half of them.
    void setStrings(const QList<std::pair<QString, QString>> &values);
    void remove(const QString &key);
    void remove(const QStringList &keys);

private:
    void write(const QString &key, const QVariant &value);

    std::optional<QString> m_setAsideFile;
    QSettings m_settings;
};
