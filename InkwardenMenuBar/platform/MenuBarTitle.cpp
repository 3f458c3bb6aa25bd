#include "MenuBarTitle.h"

QList<MenuBarTitleRun> MenuBarTitle::runs() const
{
    using Typeface = MenuBarTitleRun::Typeface;
    if (!money) {
        return {MenuBarTitleRun{title, 12, QFont::Medium, 0, Typeface::System}};
    }
    return {
        MenuBarTitleRun{QStringLiteral("\u00B7 "), 10, QFont::Normal, 1, Typeface::System},
        MenuBarTitleRun{money->currency, 9, QFont::Medium, 1, Typeface::System},
        MenuBarTitleRun{money->amount, 13, QFont::DemiBold, 0, Typeface::MonospacedDigits},
    };
}

QString MenuBarTitle::text() const
{
    QString joined;
    for (const MenuBarTitleRun &run : runs()) {
        joined += run.text;
    }
    return joined;
}

QString MenuBarTitle::figure() const
{
    return money ? money->currency + money->amount : title;
}
