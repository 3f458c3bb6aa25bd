#pragma once

#include <QCoreApplication>
#include <QLocale>
#include <QString>

#include <algorithm>

// A text that counts something, such as "%1 unit(s)", in the user's language with the plural form
// that language needs for `count`. The count is written by `locale` (grouping and digits), so the
// text carries "%1" rather than Qt's "%n". English, the language the texts are written in, needs no
// translation file: where none is loaded, "(s)" becomes "s" for every count other than 1. Mark the
// source with QT_TRANSLATE_N_NOOP, so that translators are asked for every plural form.
[[nodiscard]] inline QString countedText(const char *context, const char *source, qint64 count, const QLocale &locale)
{
    const int pluralCount = int(std::clamp<qint64>(count, -0x7fffffff, 0x7fffffff));
    QString text = QCoreApplication::translate(context, source, nullptr, pluralCount);
    if (text == QLatin1String(source)) {
        text.replace(QLatin1String("(s)"), count == 1 ? QString() : QStringLiteral("s"));
    }
    return text.arg(locale.toString(count));
}
