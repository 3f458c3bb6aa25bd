#include "StatisticsBody.h"

#include <array>
#include <cstdint>

namespace {

// A small fixed-seed generator, so every run benchmarks the same bytes.
class Dice
{
public:
    int below(int bound)
    {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<int>((m_state >> 33) % static_cast<std::uint64_t>(bound));
    }
    bool chance(int percent) { return below(100) < percent; }
    double cents(int maxWholeUnits) { return below(maxWholeUnits * 100 + 1) / 100.0; }

private:
    std::uint64_t m_state = 0x5eed'2024ULL;
};

struct Marketplace {
    const char *name;
    const char *currency;
};

constexpr std::array<Marketplace, 4> marketplaces{{
    {"Amazon.com", "USD"},
    {"Amazon.co.uk", "GBP"},
    {"Amazon.de", "EUR"},
    {"Amazon.ca", "CAD"},
}};

constexpr std::array<const char *, 8> titles{
    "The Salt Road",      "Harbour Lights", "A Quiet Inheritance", "Ninefold",
    "The Lantern Keeper", "Cold Orchard",   "Paper Moons",         "What the River Took",
};

class BodyWriter
{
public:
    explicit BodyWriter(QByteArray &out)
        : m_out(out)
    {}

    void key(const char *name)
    {
        if (!m_firstMember) {
            m_out += ',';
        }
        m_firstMember = false;
        m_out += '"';
        m_out += name;
        m_out += "\":";
    }
    void text(const char *name, const QByteArray &value)
    {
        key(name);
        m_out += '"';
        m_out += value;
        m_out += '"';
    }
    void money(const char *name, double value)
    {
        key(name);
        m_out += QByteArray::number(value, 'f', 2);
    }
    void count(const char *name, int value)
    {
        key(name);
        m_out += QByteArray::number(value);
    }
    void null(const char *name)
    {
        key(name);
        m_out += "null";
    }
    void beginObject()
    {
        m_out += '{';
        m_firstMember = true;
    }
    void endObject()
    {
        m_out += '}';
        m_firstMember = false;
    }

private:
    QByteArray &m_out;
    bool m_firstMember = true;
};

void writeRow(BodyWriter &w, int index, Dice &dice)
{
    const Marketplace &market = marketplaces[static_cast<std::size_t>(dice.below(10) < 7 ? 0 : dice.below(4))];
    const int paid = dice.below(120);
    const double paidRoyalties = paid * (2.0 + dice.cents(3));
    const int paperbacks = dice.below(25);
    const double paperbackRoyalties = paperbacks * (3.0 + dice.cents(2));
    const bool hasHardcover = dice.chance(40);
    const bool hasAudiobook = dice.chance(35);
    const int reads = dice.below(60000);
    const double readRoyalties = reads * 0.0045;
    const int audiobooks = hasAudiobook ? dice.below(15) : 0;
    const int hardcovers = hasHardcover ? dice.below(6) : 0;
    const double gross = paidRoyalties + paperbackRoyalties + readRoyalties + audiobooks * 6.1 + hardcovers * 7.4;
    const double spending = dice.chance(50) ? dice.cents(80) : 0.0;

    w.beginObject();
    QByteArray title = titles[static_cast<std::size_t>(index) % titles.size()];
    title += " (Book ";
    title += QByteArray::number(index / static_cast<int>(titles.size()) + 1);
    title += ')';
    w.text("title", title);
    QByteArray asin = "B0";
    asin += QByteArray::number(0x10000000 + index * 7919, 36).toUpper();
    w.text("asin", asin);
    w.text("marketplace", market.name);
    if (dice.chance(3)) {
        w.null("currency");
    } else {
        w.text("currency", market.currency);
    }
    w.money("gross_royalty", gross);
    w.money("spending", spending);
    w.money("net_royalty", gross - spending);
    w.money("total_read_royalty", readRoyalties);
    w.count("total_reads", reads);
    w.count("ebooks_paid_sold", paid);
    w.money("ebooks_paid_royalties", paidRoyalties);
    w.count("ebooks_free_sold", dice.chance(20) ? dice.below(400) : 0);
    w.count("paperbacks_sold", paperbacks);
    w.money("paperbacks_royalties", paperbackRoyalties);
    if (hasHardcover) {
        w.count("hardcovers_sold", hardcovers);
        w.money("hardcovers_royalties", hardcovers * 7.4);
    } else {
        w.null("hardcovers_sold");
        w.null("hardcovers_royalties");
    }
    if (hasAudiobook) {
        w.count("audiobooks_sold", audiobooks);
        w.money("audiobooks_royalties", audiobooks * 6.1);
    } else {
        w.null("audiobooks_sold");
        w.null("audiobooks_royalties");
    }
    w.count("expanded_distribution_sold", dice.below(4));
    w.money("expanded_distribution_royalties", dice.cents(6));
    w.count("pre_orders_sold", dice.chance(10) ? dice.below(40) : 0);
    if (dice.chance(25)) {
        const int largePrint = dice.below(5);
        const int boxSets = dice.below(3);
        w.key("custom_format_units");
        w.beginObject();
        w.count("Large Print", largePrint);
        w.count("Box Set", boxSets);
        w.endObject();
        w.key("custom_format_royalties");
        w.beginObject();
        w.money("Large Print", largePrint * 4.2);
        w.money("Box Set", boxSets * 11.9);
        w.endObject();
    } else if (dice.chance(50)) {
        w.null("custom_format_units");
        w.null("custom_format_royalties");
    }
    w.endObject();
}

} // namespace

QByteArray statisticsBody(int rows)
{
    QByteArray out;
    out.reserve(static_cast<qsizetype>(rows) * 820 + 64);
    out += "{\"table_data\":[";
    Dice dice;
    for (int i = 0; i < rows; ++i) {
        if (i > 0) {
            out += ',';
        }
        BodyWriter row(out);
        writeRow(row, i, dice);
    }
    out += "],\"generated_at\":\"2024-05-14T09:30:00Z\"}";
    return out;
}
