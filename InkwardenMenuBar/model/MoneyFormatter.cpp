#include "MoneyFormatter.h"

#include "RoyaltySummary.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/ucurr.h>
#include <unicode/unistr.h>

namespace {

// ICU's own test of a status, as a bool.
bool failed(UErrorCode status)
{
    return status > U_ZERO_ERROR;
}

QString fromUnicodeString(const icu::UnicodeString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

std::optional<QString> pinnedSymbol(const QString &code)
{
    if (code == u"USD") {
        return QStringLiteral("$");
    }
    if (code == u"CAD") {
        return QStringLiteral("CA$");
    }
    return std::nullopt;
}

// ICU quietly cuts a longer code to three letters and formats an empty one with a placeholder
// sign; neither is the currency the server named.
bool isCurrencyCode(const QString &code)
{
    return code.size() == 3 && std::all_of(code.cbegin(), code.cend(), [](QChar c) { return c >= u'A' && c <= u'Z'; });
}

int fractionDigits(double value, bool dropCentsFromThousand)
{
    return dropCentsFromThousand && std::fabs(value) >= 1000 ? 0 : 2;
}

// The shortest text that reads back as the same double, as the last resort of every formatter.
QString plainDecimal(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

namespace {

// The C locale has no currency conventions; it reads as American English, with grouping.
QLocale withCurrencyConventions(const QLocale &locale)
{
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

} // namespace

MoneyFormatter::MoneyFormatter(const QLocale &locale)
    : m_locale(withCurrencyConventions(locale))
    , m_icuLocaleID(m_locale.name().toLatin1())
{}

QLocale MoneyFormatter::userLocale()
{
    return withCurrencyConventions(QLocale::system());
}

QString MoneyFormatter::money(double value, const QString &currencyCode, bool compact) const
{
    const QString code = currencyCode.toUpper();
    QString fallback = code + u' ' + plainDecimal(value);

    if (!isCurrencyCode(code)) {
        return fallback;
    }

    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale(m_icuLocaleID.constData());
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createCurrencyInstance(locale, status));
    auto *decimal = dynamic_cast<icu::DecimalFormat *>(format.get());
    if (failed(status) || decimal == nullptr) {
        return fallback;
    }
    decimal->setCurrency(reinterpret_cast<const char16_t *>(code.utf16()), status);
    if (failed(status)) {
        return fallback;
    }
    if (const std::optional<QString> symbol = pinnedSymbol(code)) {
        // Set after the currency: choosing a currency resets the symbols to the locale's own.
        icu::DecimalFormatSymbols symbols(*decimal->getDecimalFormatSymbols());
        symbols.setSymbol(icu::DecimalFormatSymbols::kCurrencySymbol,
                          icu::UnicodeString(reinterpret_cast<const char16_t *>(symbol->utf16()), symbol->size()));
        decimal->setDecimalFormatSymbols(symbols);
    }
    const int digits = fractionDigits(value, compact);
    decimal->setMinimumFractionDigits(digits);
    decimal->setMaximumFractionDigits(digits);

    icu::UnicodeString text;
    decimal->format(value, text);
    return text.length() == 0 ? fallback : fromUnicodeString(text);
}

QString MoneyFormatter::currencySymbol(const QString &currencyCode) const
{
    QString code = currencyCode.toUpper();
    if (const std::optional<QString> pinned = pinnedSymbol(code)) {
        return *pinned;
    }
    if (!isCurrencyCode(code)) {
        return code;
    }
    UErrorCode status = U_ZERO_ERROR;
    UBool isChoiceFormat = 0;
    int32_t length = 0;
    const UChar *symbol = ucurr_getName(reinterpret_cast<const UChar *>(code.utf16()), m_icuLocaleID.constData(),
                                        UCURR_SYMBOL_NAME, &isChoiceFormat, &length, &status);
    if (failed(status) || symbol == nullptr || length == 0) {
        return code;
    }
    return QString(reinterpret_cast<const QChar *>(symbol), length);
}

std::optional<MenuBarMoneyParts> MoneyFormatter::menuBarMoneyParts(const RoyaltySummary &summary,
                                                                   DisplayedRoyalty displayed, bool hasRefreshed) const
{
    if (!hasRefreshed) {
        return std::nullopt;
    }
    const double value = highlightedRoyalty(summary, displayed);

    QString amount;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(icu::Locale(m_icuLocaleID.constData()), status));
    if (!failed(status) && format) {
        const int digits = fractionDigits(value, true);
        format->setGroupingUsed(static_cast<UBool>(true));
        format->setMinimumFractionDigits(digits);
        format->setMaximumFractionDigits(digits);
        icu::UnicodeString text;
        format->format(value, text);
        amount = fromUnicodeString(text);
    }
    if (amount.isEmpty()) {
        amount = plainDecimal(value);
    }
    return MenuBarMoneyParts{currencySymbol(summary.currency), amount};
}

double MoneyFormatter::highlightedRoyalty(const RoyaltySummary &summary, DisplayedRoyalty displayed)
{
    return displayed == DisplayedRoyalty::net ? summary.net : summary.gross;
}
