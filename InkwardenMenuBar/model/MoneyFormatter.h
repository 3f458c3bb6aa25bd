#pragma once

#include "DisplayedRoyalty.h"

#include <QLocale>
#include <QString>

#include <optional>

struct RoyaltySummary;

// The headline figure split for the panel, so the symbol can be drawn smaller than the digits.
struct MenuBarMoneyParts {
    QString currency;
    QString amount;

    friend bool operator==(const MenuBarMoneyParts &, const MenuBarMoneyParts &) = default;
};

// Formats every amount the user sees. Qt knows the symbol of a locale's own currency only, so the
// currency texts come from ICU: euros print as € in an American locale and pounds as £ in a German
// one. US and Canadian dollars are pinned to "$" and "CA$" in every locale.
class MoneyFormatter
{
public:
    // `locale` decides separators, grouping and where the symbol goes; the C locale reads as
    // American English.
    explicit MoneyFormatter(const QLocale &locale = userLocale());

    // The user's locale for numbers.
    static QLocale userLocale();

    const QLocale &locale() const { return m_locale; }

    // `value` in `currencyCode`; two fraction digits, none when compact and |value| >= 1000.
    QString money(double value, const QString &currencyCode, bool compact) const;

    // The highlighted royalty of `summary` as symbol and number; none before the first refresh.
    std::optional<MenuBarMoneyParts> menuBarMoneyParts(const RoyaltySummary &summary, DisplayedRoyalty displayed,
                                                       bool hasRefreshed) const;

    static double highlightedRoyalty(const RoyaltySummary &summary, DisplayedRoyalty displayed);

    // The symbol shown for a currency: pinned for dollars, else the locale's, else the code itself.
    QString currencySymbol(const QString &currencyCode) const;

private:
    QLocale m_locale;
    QByteArray m_icuLocaleID;
};
