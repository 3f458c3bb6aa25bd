#include "StatusLine.h"

#include <QJsonDocument>
#include <QJsonObject>

std::optional<StatusLine::Format> StatusLine::formatFromName(const QString &name)
{
    if (name == QLatin1String("text")) {
        return Format::text;
    }
    if (name == QLatin1String("waybar")) {
        return Format::waybar;
    }
    if (name == QLatin1String("genmon")) {
        return Format::genmon;
    }
    return std::nullopt;
}

QString StatusLine::format(Format format, const QString &title, const QString &toolTip, const QString &state,
                           const QString &clickCommand)
{
    switch (format) {
    case Format::text:
        // One line, whatever the title holds.
        return QString(title).replace(u'\n', u' ');
    case Format::genmon: {
        QString line = QStringLiteral("<txt>") + title.toHtmlEscaped() + QStringLiteral("</txt><tool>")
                       + toolTip.toHtmlEscaped() + QStringLiteral("</tool>");
        if (!clickCommand.isEmpty()) {
            // genmon splits the command as a shell would, and reads it as it stands (not as markup).
            line += QStringLiteral("<txtclick>'") + QString(clickCommand).replace(u'\'', QStringLiteral("'\\''"))
                    + QStringLiteral("'</txtclick>");
        }
        return line.replace(u'\n', QStringLiteral("&#10;"));
    }
    case Format::waybar:
        break;
    }
    const QJsonObject object{
        {QStringLiteral("text"), title.toHtmlEscaped()},
        {QStringLiteral("tooltip"), toolTip.toHtmlEscaped()},
        {QStringLiteral("class"), state},
        {QStringLiteral("alt"), state},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString StatusLine::notRunning(Format format)
{
    return StatusLine::format(format, QString(), notRunningMessage(), QStringLiteral("notRunning"));
}
