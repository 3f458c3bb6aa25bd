#include "WireWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace WireWriter {

namespace {

template <typename T>
QJsonObject mapObject(const QMap<QString, T> &map)
{
    QJsonObject object;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        object.insert(it.key(), QJsonValue(it.value()));
    }
    return object;
}

// Builds one JSON object of a body in the chosen form.
class ObjectWriter
{
public:
    explicit ObjectWriter(Form form)
        : m_form(form)
    {}

    void required(const char *key, const QJsonValue &value) { m_object.insert(QLatin1String(key), value); }

    template <typename T>
    void optional(const char *key, const std::optional<T> &value)
    {
        if (value) {
            m_object.insert(QLatin1String(key), QJsonValue(*value));
        } else if (m_form == Form::NullForAbsent) {
            m_object.insert(QLatin1String(key), QJsonValue::Null);
        }
    }

    template <typename T>
    void optionalMap(const char *key, const std::optional<QMap<QString, T>> &map)
    {
        if (map) {
            m_object.insert(QLatin1String(key), mapObject(*map));
        } else if (m_form == Form::NullForAbsent) {
            m_object.insert(QLatin1String(key), QJsonValue::Null);
        }
    }

    QJsonObject object() const
    {
        QJsonObject object = m_object;
        if (m_form == Form::WithUnknownKeys) {
            // Mistyped copies of real members, one level down, must not reach the decoder.
            const QJsonObject lookAlikes{
                {QStringLiteral("table_data"), QJsonValue::Null},
                {QStringLiteral("total_reads"), QStringLiteral("many")},
                {QStringLiteral("account_id"), 7},
            };
            object.insert(QStringLiteral("inkwarden_unknown_member"), QJsonArray{lookAlikes, 1.5, true});
        }
        return object;
    }

private:
    Form m_form;
    QJsonObject m_object;
};

QByteArray document(const QJsonObject &object, Form form)
{
    QByteArray json =
        QJsonDocument(object).toJson(form == Form::Indented ? QJsonDocument::Indented : QJsonDocument::Compact);
    // Qt writes U+FEFF as raw UTF-8, and its parser drops a raw one that opens a string; the escaped
    // spelling, equally valid, keeps it.
    json.replace(QByteArrayView("\xEF\xBB\xBF"), QByteArrayView("\\ufeff"));
    return json;
}

QJsonObject rowObject(const BookStatsRow &row, Form form)
{
    ObjectWriter writer(form);
    writer.optional("currency", row.currency);
    writer.optional("gross_royalty", row.grossRoyalty);
    writer.optional("spending", row.spending);
    writer.optional("net_royalty", row.netRoyalty);
    writer.optional("total_read_royalty", row.totalReadRoyalty);
    writer.optional("total_reads", row.totalReads);
    writer.optional("ebooks_paid_sold", row.paidEbookUnits);
    writer.optional("ebooks_paid_royalties", row.paidEbookRoyalties);
    writer.optional("ebooks_free_sold", row.freeEbookDownloads);
    writer.optional("paperbacks_sold", row.paperbackUnits);
    writer.optional("paperbacks_royalties", row.paperbackRoyalties);
    writer.optional("hardcovers_sold", row.hardcoverUnits);
    writer.optional("hardcovers_royalties", row.hardcoverRoyalties);
    writer.optional("audiobooks_sold", row.audiobookUnits);
    writer.optional("audiobooks_royalties", row.audiobookRoyalties);
    writer.optional("expanded_distribution_sold", row.expandedDistributionUnits);
    writer.optional("expanded_distribution_royalties", row.expandedDistributionRoyalties);
    writer.optional("pre_orders_sold", row.preOrderUnits);
    writer.optionalMap("custom_format_units", row.customFormatUnits);
    writer.optionalMap("custom_format_royalties", row.customFormatRoyalties);
    return writer.object();
}

QJsonObject accountObject(const PublisherAccount &account, Form form)
{
    ObjectWriter writer(form);
    writer.required("account_id", account.accountID);
    writer.required("user_email", account.userEmail);
    writer.optional("display_name", account.displayName);
    writer.required("access_type", account.accessType);
    return writer.object();
}

} // namespace

QByteArray bookStats(const BookStatsResponse &response, Form form)
{
    QJsonArray rows;
    for (const BookStatsRow &row : response.tableData) {
        rows.append(rowObject(row, form));
    }
    ObjectWriter writer(form);
    writer.required("table_data", rows);
    return document(writer.object(), form);
}

QByteArray accounts(const AccountsResponse &response, Form form)
{
    QJsonArray accounts;
    for (const PublisherAccount &account : response.accounts) {
        accounts.append(accountObject(account, form));
    }
    ObjectWriter writer(form);
    writer.required("accounts", accounts);
    writer.optional("latest_app_version", response.latestAppVersion);
    return document(writer.object(), form);
}

QByteArray exchange(const MacAuthExchangeResponse &response, Form form)
{
    ObjectWriter writer(form);
    writer.required("api_key", response.apiKey);
    writer.required("user_email", response.userEmail);
    return document(writer.object(), form);
}

QByteArray apiError(const APIErrorResponse &response, Form form)
{
    ObjectWriter writer(form);
    writer.required("error", response.error);
    return document(writer.object(), form);
}

} // namespace WireWriter
