#pragma once

#include <QString>

// The frame shared by the server's browser pages: one stylesheet, light and dark.
class HtmlPage
{
public:
    // `body` is trusted markup; anything from a request must be escaped before it goes in.
    static QString render(const QString &title, const QString &body);
    static QString escape(const QString &text) { return text.toHtmlEscaped(); }
};
