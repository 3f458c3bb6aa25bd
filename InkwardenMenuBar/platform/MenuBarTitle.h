#pragma once

#include "model/MoneyFormatter.h"

#include <QFont>
#include <QList>
#include <QString>

#include <optional>

// One run of the panel title: a piece of text with its own size, weight and baseline.
struct MenuBarTitleRun {
    enum class Typeface { System, MonospacedDigits };

    QString text;
    qreal pointSize = 0;
    QFont::Weight weight = QFont::Normal;
    // Raises the run above the common baseline, in points.
    qreal baselineOffset = 0;
    Typeface typeface = Typeface::System;

    friend bool operator==(const MenuBarTitleRun &, const MenuBarTitleRun &) = default;
};

// What the panel shows next to the icon, from the store's `menuBarTitle` and `menuBarMoneyParts()`.
// Once a refresh has succeeded the money parts are present and win over the title: the item keeps the
// last good figure also when a later refresh failed and the title became "◉ !"; the error shows in
// the popover. Before that, the title itself ("◉ —", "◉ !") is shown plain.
struct MenuBarTitle {
    QString title;
    std::optional<MenuBarMoneyParts> money;

    bool isStyled() const { return money.has_value(); }

    // Styled: "· " (10 pt regular, raised 1), the currency symbol (9 pt medium, raised 1) and the
    // amount (13 pt semibold, tabular digits). Plain: the title in 12 pt medium.
    QList<MenuBarTitleRun> runs() const;

    // The runs' texts joined: the label for hosts that draw text themselves.
    QString text() const;

    // The figure without the leading dot ("$1,234"), or the plain title: for tool tips.
    QString figure() const;

    friend bool operator==(const MenuBarTitle &, const MenuBarTitle &) = default;
};
