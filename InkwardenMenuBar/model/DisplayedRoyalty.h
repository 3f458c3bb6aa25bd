#pragma once

#include <QCoreApplication>
#include <QHashFunctions>
#include <QString>

#include <array>
#include <optional>

// Whether gross or net royalties are the headline figure. The raw value is what the settings keep,
// so it must never change; the title is what the settings' choice shows, and may.
class DisplayedRoyalty
{
    Q_DECLARE_TR_FUNCTIONS(DisplayedRoyalty)

public:
    enum Case : quint8 { gross, net };

    constexpr DisplayedRoyalty(Case value) // NOLINT(google-explicit-constructor): reads like a Swift case
        : m_case(value)
    {}

    static constexpr std::array<DisplayedRoyalty, 2> allCases() { return {gross, net}; }
    static std::optional<DisplayedRoyalty> fromRawValue(QStringView raw);

    constexpr Case value() const { return m_case; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString title() const;

    friend constexpr bool operator==(DisplayedRoyalty, DisplayedRoyalty) = default;
    friend size_t qHash(DisplayedRoyalty royalty, size_t seed = 0) noexcept
    {
        return ::qHash(int(royalty.m_case), seed);
    }

private:
    Case m_case;
};
