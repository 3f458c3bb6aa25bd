#pragma once

#include "SystemColor.h"

#include <QCoreApplication>
#include <QHashFunctions>
#include <QLocale>
#include <QString>

#include <array>
#include <functional>
#include <optional>

struct RoyaltySummary;

// The fixed kinds of sale that the sales breakdown lists. The declaration order is the default order
// of the breakdown; the raw value is the case name and is what the settings keep.
class SalesBreakdownMetric
{
    Q_DECLARE_TR_FUNCTIONS(SalesBreakdownMetric)

public:
    enum Case : quint8 {
        paidEbooks,
        paperbacks,
        hardcovers,
        audiobooks,
        expandedDistribution,
        kenpReads,
        currentPreOrders,
        freeEbooks,
    };

    // Formats an amount of the summary's currency, as the store's money(_, compact: false) does.
    using MoneyText = std::function<QString(double)>;

    constexpr SalesBreakdownMetric(Case value) // NOLINT(google-explicit-constructor): reads like a Swift case
        : m_case(value)
    {}

    static constexpr std::array<SalesBreakdownMetric, 8> allCases()
    {
        return {paidEbooks,           paperbacks, hardcovers,       audiobooks,
                expandedDistribution, kenpReads,  currentPreOrders, freeEbooks};
    }
    static std::optional<SalesBreakdownMetric> fromRawValue(QStringView raw);

    constexpr Case value() const { return m_case; }
    QString rawValue() const;
    QString id() const { return rawValue(); }

    QString title() const;
    // The symbol's name in the icon table of the views.
    QString icon() const;
    SystemColor color() const;

    // Counts use the locale's integer grouping (1,234 units in English).
    QString unitsText(const RoyaltySummary &summary, const QLocale &locale) const;
    // None for the metrics that carry no royalties (pre-orders, free ebooks).
    std::optional<QString> royaltiesText(const RoyaltySummary &summary, const MoneyText &money) const;

    // "1 unit", "1,234 units": a count of copies sold in the user's language, grouped by `locale`.
    static QString countedUnits(qint64 count, const QLocale &locale);

    friend constexpr bool operator==(SalesBreakdownMetric, SalesBreakdownMetric) = default;
    friend size_t qHash(SalesBreakdownMetric metric, size_t seed = 0) noexcept
    {
        return ::qHash(int(metric.m_case), seed);
    }

private:
    Case m_case;
};
