#include "Preferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

// A file QSettings cannot read would be overwritten by the next write. It is moved aside instead,
// so the user's old settings can still be recovered by hand.
std::optional<QString> setAsideIfUnreadable(const QString &filePath)
{
    if (!QFileInfo::exists(filePath)) {
        return std::nullopt;
    }
    QSettings probe(filePath, QSettings::IniFormat);
    if (probe.status() == QSettings::NoError) {
        return std::nullopt;
    }
    const QString aside = filePath + QStringLiteral(".unreadable-")
                          + QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmss"));
    if (!QFile::rename(filePath, aside)) {
        return std::nullopt;
    }
    return aside;
}

} // namespace

Preferences::Preferences(const QString &filePath)
    : m_setAsideFile(setAsideIfUnreadable(filePath))
    , m_settings(filePath, QSettings::IniFormat)
{}

QString Preferences::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/inkwarden/inkwarden.conf");
}

std::optional<QString> Preferences::string(const QString &key) const
{
    const QVariant value = m_settings.value(key);
    if (!value.isValid() || !value.canConvert<QString>()) {
        return std::nullopt;
    }
    // A list written by hand ("a, b") comes back as a list: that is not a string setting.
    if (value.typeId() == QMetaType::QStringList) {
        return std::nullopt;
    }
    return value.toString();
}

std::optional<qint64> Preferences::integer(const QString &key) const
{
    const std::optional<QString> text = string(key);
    if (!text) {
        return std::nullopt;
    }
    bool ok = false;
    const qint64 value = text->trimmed().toLongLong(&ok);
    return ok ? std::optional<qint64>(value) : std::nullopt;
}

std::optional<QStringList> Preferences::stringList(const QString &key) const
{
    const QVariant value = m_settings.value(key);
    if (!value.isValid()) {
        return std::nullopt;
    }
    return value.toStringList();
}

std::optional<QDateTime> Preferences::date(const QString &key) const
{
    const std::optional<QString> text = string(key);
    if (!text) {
        return std::nullopt;
    }
    const QDateTime value = QDateTime::fromString(*text, Qt::ISODateWithMs);
    return value.isValid() ? std::optional<QDateTime>(value) : std::nullopt;
}

void Preferences::setString(const QString &key, const QString &value)
{
    write(key, value);
}

std::optional<bool> Preferences::boolean(const QString &key) const
{
    const std::optional<QString> text = string(key);
    if (text == u"true") {
        return true;
    }
    if (text == u"false") {
        return false;
    }
    return std::nullopt;
}

void Preferences::setBoolean(const QString &key, bool value)
{
    write(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void Preferences::setInteger(const QString &key, qint64 value)
{
    write(key, QString::number(value));
}

void Preferences::setStringList(const QString &key, const QStringList &value)
{
    write(key, value);
}

void Preferences::setDate(const QString &key, const QDateTime &value)
{
    write(key, value.toUTC().toString(Qt::ISODateWithMs));
}

void Preferences::setStrings(const QList<std::pair<QString, QString>> &values)
{
    for (const auto &[key, value] : values) {
        m_settings.setValue(key, value);
    }
    m_settings.sync();
}

void Preferences::remove(const QString &key)
{
    remove(QStringList{key});
}

void Preferences::remove(const QStringList &keys)
{
    for (const QString &key : keys) {
        m_settings.remove(key);
    }
    m_settings.sync();
}

void Preferences::write(const QString &key, const QVariant &value)
{
    m_settings.setValue(key, value);
    // Written through at once: a settings change must survive a crash or a power cut.
    m_settings.sync();
}
