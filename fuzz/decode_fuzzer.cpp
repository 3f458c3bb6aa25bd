// libFuzzer target for Inkwarden's wire decoding. Every input goes to all four response decoders,
// and each result is held to invariants that must hold for any bytes a server could send:
//  - decoding is deterministic;
//  - it agrees with ReferenceDecoder, a separate plain statement of the same typing rules;
//  - a decoded body written back out (compact, indented, nulls for absent members, unknown keys
//    added) decodes to the same value;
//  - any decoded text survives the exchange request's encoder unchanged;
//  - the statistics rows fold to what an independent running sum gives, whenever no count sum
//    overflows (an overflow deliberately aborts the app, so those inputs are not folded here).

#include "ReferenceDecoder.h"
#include "WireWriter.h"
#include "model/RoyaltySummary.h"
#include "service/BookStatsFold.h"
#include "service/MacAuthExchangeRequest.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void invariantBroken(const char *what, const QByteArray &input)
{
    std::fprintf(stderr, "Inkwarden decode invariant broken: %s\ninput: %s\n", what,
                 input.toPercentEncoding().constData());
    std::abort();
}

#define INKWARDEN_FUZZ_CHECK(condition, input)                                                                         \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            invariantBroken(#condition, input);                                                                        \
        }                                                                                                              \
    } while (false)

template <typename Body, typename Decode, typename Reference, typename Write>
std::optional<Body> checkBody(const QByteArray &input, Decode decode, Reference reference, Write write)
{
    std::optional<Body> decoded = decode(input);
    INKWARDEN_FUZZ_CHECK(decoded == decode(input), input);
    INKWARDEN_FUZZ_CHECK(decoded == reference(input), input);
    if (decoded) {
        for (const WireWriter::Form form : WireWriter::allForms) {
            const QByteArray rewritten = write(*decoded, form);
            INKWARDEN_FUZZ_CHECK(decode(rewritten) == decoded, rewritten);
        }
    }
    return decoded;
}

// The exchange request must carry any text unchanged, whatever it contains.
void checkRequestCarries(const QString &first, const QString &second)
{
    const QByteArray encoded = MacAuthExchangeRequest{first, second}.encode();
    // Read back as the server reads it: with a U+FEFF that opens a string kept, which Qt's parser
    // only does for the escaped spelling.
    QByteArray readable = encoded;
    readable.replace(QByteArrayView("\xEF\xBB\xBF"), QByteArrayView("\\ufeff"));
    QJsonParseError error{};
    const QJsonObject object = QJsonDocument::fromJson(readable, &error).object();
    INKWARDEN_FUZZ_CHECK(error.error == QJsonParseError::NoError, encoded);
    INKWARDEN_FUZZ_CHECK(object.size() == 2, encoded);
    INKWARDEN_FUZZ_CHECK(object.value(QLatin1String("code")) == QJsonValue(first), encoded);
    INKWARDEN_FUZZ_CHECK(object.value(QLatin1String("code_verifier")) == QJsonValue(second), encoded);
}

// Running sums in row order, as the fold makes them; nothing when a count sum would leave 64 bits.
class ExpectedFold
{
public:
    static std::optional<RoyaltySummary> of(const QList<BookStatsRow> &rows)
    {
        ExpectedFold fold;
        for (const BookStatsRow &row : rows) {
            fold.add(row);
        }
        if (fold.m_overflowed) {
            return std::nullopt;
        }
        return fold.m_summary;
    }

private:
    void count(qint64 &total, std::optional<qint64> value)
    {
        if (__builtin_add_overflow(total, value.value_or(0), &total)) {
            m_overflowed = true;
        }
    }

    static void money(double &total, std::optional<double> value) { total = total + value.value_or(0.0); }

    void add(const BookStatsRow &row)
    {
        RoyaltySummary &s = m_summary;
        money(s.gross, row.grossRoyalty);
        money(s.spending, row.spending);
        money(s.net, row.netRoyalty);
        money(s.readRoyalties, row.totalReadRoyalty);
        count(s.reads, row.totalReads);
        count(s.paidEbookUnits, row.paidEbookUnits);
        money(s.paidEbookRoyalties, row.paidEbookRoyalties);
        count(s.freeEbookDownloads, row.freeEbookDownloads);
        count(s.paperbackUnits, row.paperbackUnits);
        money(s.paperbackRoyalties, row.paperbackRoyalties);
        count(s.hardcoverUnits, row.hardcoverUnits);
        money(s.hardcoverRoyalties, row.hardcoverRoyalties);
        count(s.audiobookUnits, row.audiobookUnits);
        money(s.audiobookRoyalties, row.audiobookRoyalties);
        count(s.expandedDistributionUnits, row.expandedDistributionUnits);
        money(s.expandedDistributionRoyalties, row.expandedDistributionRoyalties);
        count(s.preOrderUnits, row.preOrderUnits);

        const QMap<QString, qint64> units = row.customFormatUnits.value_or(QMap<QString, qint64>());
        const QMap<QString, double> royalties = row.customFormatRoyalties.value_or(QMap<QString, double>());
        QStringList names = units.keys() + royalties.keys();
        names.removeDuplicates();
        for (const QString &name : std::as_const(names)) {
            FormatSalesSummary entry = s.customFormats.value(name);
            count(entry.units, units.contains(name) ? std::optional(units.value(name)) : std::nullopt);
            money(entry.royalties, royalties.contains(name) ? std::optional(royalties.value(name)) : std::nullopt);
            s.customFormats.insert(name, entry);
        }

        if (row.currency.has_value() && row.currency->size() > 0) {
            s.currency = *row.currency;
        }
    }

    RoyaltySummary m_summary;
    bool m_overflowed = false;
};

// Both sides make the same additions in the same order, so even a NaN from inf + -inf must match
// bit for bit; a plain == would call two NaNs different.
bool sameMoney(double lhs, double rhs)
{
    return std::bit_cast<quint64>(lhs) == std::bit_cast<quint64>(rhs);
}

bool sameSummary(const RoyaltySummary &a, const RoyaltySummary &b)
{
    const bool moneyMatches = sameMoney(a.gross, b.gross) && sameMoney(a.spending, b.spending)
                              && sameMoney(a.net, b.net) && sameMoney(a.readRoyalties, b.readRoyalties)
                              && sameMoney(a.paidEbookRoyalties, b.paidEbookRoyalties)
                              && sameMoney(a.paperbackRoyalties, b.paperbackRoyalties)
                              && sameMoney(a.hardcoverRoyalties, b.hardcoverRoyalties)
                              && sameMoney(a.audiobookRoyalties, b.audiobookRoyalties)
                              && sameMoney(a.expandedDistributionRoyalties, b.expandedDistributionRoyalties);
    const bool countsMatch = a.reads == b.reads && a.paidEbookUnits == b.paidEbookUnits
                             && a.freeEbookDownloads == b.freeEbookDownloads && a.paperbackUnits == b.paperbackUnits
                             && a.hardcoverUnits == b.hardcoverUnits && a.audiobookUnits == b.audiobookUnits
                             && a.expandedDistributionUnits == b.expandedDistributionUnits
                             && a.preOrderUnits == b.preOrderUnits;
    if (!moneyMatches || !countsMatch || a.currency != b.currency || a.customFormats.keys() != b.customFormats.keys()) {
        return false;
    }
    for (auto it = a.customFormats.cbegin(); it != a.customFormats.cend(); ++it) {
        const FormatSalesSummary other = b.customFormats.value(it.key());
        if (it->units != other.units || !sameMoney(it->royalties, other.royalties)) {
            return false;
        }
    }
    return true;
}

void checkFold(const QList<BookStatsRow> &rows, const QByteArray &input)
{
    // A count sum that would leave 64 bits makes the whole table invalid, never a crash.
    const std::optional<RoyaltySummary> expected = ExpectedFold::of(rows);
    const std::optional<RoyaltySummary> folded = BookStatsFold::folding(rows);
    INKWARDEN_FUZZ_CHECK(folded.has_value() == expected.has_value(), input);
    if (expected) {
        INKWARDEN_FUZZ_CHECK(sameSummary(*folded, *expected), input);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // No copy: the decoders see exactly the fuzzer's bytes, with no terminating NUL to lean on.
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));

    const std::optional<BookStatsResponse> stats = checkBody<BookStatsResponse>(
        input, &BookStatsResponse::decode, &ReferenceDecoder::bookStats, &WireWriter::bookStats);
    if (stats) {
        checkFold(stats->tableData, input);
        for (const BookStatsRow &row : stats->tableData) {
            if (row.currency) {
                checkRequestCarries(*row.currency, QString());
            }
        }
    }

    const std::optional<AccountsResponse> accounts = checkBody<AccountsResponse>(
        input, &AccountsResponse::decode, &ReferenceDecoder::accounts, &WireWriter::accounts);
    if (accounts) {
        for (const PublisherAccount &account : accounts->accounts) {
            checkRequestCarries(account.accountID, account.displayName.value_or(account.accessType));
        }
    }

    const std::optional<MacAuthExchangeResponse> exchange = checkBody<MacAuthExchangeResponse>(
        input, &MacAuthExchangeResponse::decode, &ReferenceDecoder::exchange, &WireWriter::exchange);
    if (exchange) {
        checkRequestCarries(exchange->apiKey, exchange->userEmail);
    }

    const std::optional<APIErrorResponse> apiError = checkBody<APIErrorResponse>(
        input, &APIErrorResponse::decode, &ReferenceDecoder::apiError, &WireWriter::apiError);
    if (apiError) {
        checkRequestCarries(apiError->error, apiError->error);
    }
    return 0;
}
