#pragma once

#include <QCoreApplication>
#include <QString>

#include <optional>

// One line of `inkwarden --status`: the panel status as plain text (the title), as the JSON object
// that waybar's custom modules read ({"text", "tooltip", "class", "alt"}), or as the tags of
// xfce4-genmon-plugin (<txt>, <tool>, and <txtclick> running `clickCommand`). Waybar and genmon read
// Pango markup: their texts are escaped.
class StatusLine
{
    Q_DECLARE_TR_FUNCTIONS(StatusLine)

public:
    enum class Format { text, waybar, genmon };

    // "text", "waybar" or "genmon"; anything else is no format.
    static std::optional<Format> formatFromName(const QString &name);

    static QString format(Format format, const QString &title, const QString &toolTip, const QString &state,
                          const QString &clickCommand = QString());

    // What a following bar shows while no Inkwarden runs: nothing (an empty text hides a waybar
    // module), with the reason in the tool tip and the class "notRunning".
    static QString notRunning(Format format);
    static QString notRunningMessage()
    {
        //: Printed by `inkwarden --status`, and the tool tip of a bar's module, while Inkwarden does not run.
        return tr("Inkwarden is not running.");
    }
};
