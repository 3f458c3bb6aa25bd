#include "DevServerConfig.h"

#include <QRegularExpression>

std::optional<QString> DevServerConfig::normalizedBasePath(const QString &path)
{
    QString trimmed = path.trimmed();
    while (trimmed.startsWith(u'/')) {
        trimmed.remove(0, 1);
    }
    while (trimmed.endsWith(u'/')) {
        trimmed.chop(1);
    }
    if (trimmed.isEmpty()) {
        return QString();
    }
    static const QRegularExpression allowed(QStringLiteral("^[A-Za-z0-9._-]+(/[A-Za-z0-9._-]+)*$"));
    if (!allowed.match(trimmed).hasMatch()) {
        return std::nullopt;
    }
    return u'/' + trimmed;
}
