#include "AppInfo.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

std::optional<QString> nonEmptyString(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString() || value.toString().isEmpty()) {
        return std::nullopt;
    }
    return value.toString();
}

} // namespace

AppInfo AppInfo::compiledIn()
{
    return fromFile(QStringLiteral(":/inkwarden/app-info.json"));
}

AppInfo AppInfo::fromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    return {nonEmptyString(object, QLatin1String("version")),
            nonEmptyString(object, QLatin1String("defaultServerURL"))};
}
