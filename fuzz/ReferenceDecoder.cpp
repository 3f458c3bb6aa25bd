#include "ReferenceDecoder.h"

#include <QCborValue>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace ReferenceDecoder {

namespace {

// Thrown as soon as the body breaks a rule; the caller turns it into "no body".
struct Rejected {};

QJsonObject topLevelObject(const QByteArray &json)
{
    // Qt's parser drops a raw U+FEFF that opens a string; written as an escape it survives. Only a
    // mark in front of the whole document is no part of any value.
    QByteArray readable = json.left(3);
    readable += json.mid(3).replace("\xEF\xBB\xBF", "\\ufeff");
    if (!json.startsWith("\xEF\xBB\xBF")) {
        readable = json;
        readable.replace("\xEF\xBB\xBF", "\\ufeff");
    }
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(readable, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        throw Rejected{};
    }
    return document.object();
}

// The member's value, or nothing when the key is missing or holds null.
std::optional<QJsonValue> member(const QJsonObject &object, const char *key)
{
    const auto it = object.constFind(QLatin1String(key));
    if (it == object.constEnd() || it.value().type() == QJsonValue::Null) {
        return std::nullopt;
    }
    return it.value();
}

QString text(const QJsonValue &value)
{
    if (value.type() != QJsonValue::String) {
        throw Rejected{};
    }
    return value.toString();
}

double amount(const QJsonValue &value)
{
    if (value.type() != QJsonValue::Double) {
        throw Rejected{};
    }
    return value.toDouble();
}

qint64 count(const QJsonValue &value)
{
    if (value.type() != QJsonValue::Double) {
        throw Rejected{};
    }
    const QCborValue number = QCborValue::fromJsonValue(value);
    if (number.isInteger()) {
        return number.toInteger();
    }
    const double real = number.toDouble();
    if (!std::isfinite(real) || std::trunc(real) != real || real < -0x1p63 || real >= 0x1p63) {
        throw Rejected{};
    }
    return static_cast<qint64>(real);
}

QString requiredText(const QJsonObject &object, const char *key)
{
    const std::optional<QJsonValue> value = member(object, key);
    if (!value) {
        throw Rejected{};
    }
    return text(*value);
}

template <typename T, typename Convert>
std::optional<T> optional(const QJsonObject &object, const char *key, Convert convert)
{
    const std::optional<QJsonValue> value = member(object, key);
    if (!value) {
        return std::nullopt;
    }
    return convert(*value);
}

template <typename T, typename Convert>
std::optional<QMap<QString, T>> optionalMap(const QJsonObject &object, const char *key, Convert convert)
{
    const std::optional<QJsonValue> value = member(object, key);
    if (!value) {
        return std::nullopt;
    }
    if (value->type() != QJsonValue::Object) {
        throw Rejected{};
    }
    QMap<QString, T> map;
    const QJsonObject entries = value->toObject();
    const QStringList names = entries.keys();
    for (const QString &name : names) {
        map.insert(name, convert(entries.value(name)));
    }
    return map;
}

QList<QJsonObject> requiredObjects(const QJsonObject &object, const char *key)
{
    const std::optional<QJsonValue> value = member(object, key);
    if (!value || value->type() != QJsonValue::Array) {
        throw Rejected{};
    }
    QList<QJsonObject> objects;
    const QJsonArray array = value->toArray();
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (array.at(i).type() != QJsonValue::Object) {
            throw Rejected{};
        }
        objects.append(array.at(i).toObject());
    }
    return objects;
}

BookStatsRow row(const QJsonObject &object)
{
    BookStatsRow row;
    row.currency = optional<QString>(object, "currency", text);
    row.grossRoyalty = optional<double>(object, "gross_royalty", amount);
    row.spending = optional<double>(object, "spending", amount);
    row.netRoyalty = optional<double>(object, "net_royalty", amount);
    row.totalReadRoyalty = optional<double>(object, "total_read_royalty", amount);
    row.totalReads = optional<qint64>(object, "total_reads", count);
    row.paidEbookUnits = optional<qint64>(object, "ebooks_paid_sold", count);
    row.paidEbookRoyalties = optional<double>(object, "ebooks_paid_royalties", amount);
    row.freeEbookDownloads = optional<qint64>(object, "ebooks_free_sold", count);
    row.paperbackUnits = optional<qint64>(object, "paperbacks_sold", count);
    row.paperbackRoyalties = optional<double>(object, "paperbacks_royalties", amount);
    row.hardcoverUnits = optional<qint64>(object, "hardcovers_sold", count);
    row.hardcoverRoyalties = optional<double>(object, "hardcovers_royalties", amount);
    row.audiobookUnits = optional<qint64>(object, "audiobooks_sold", count);
    row.audiobookRoyalties = optional<double>(object, "audiobooks_royalties", amount);
    row.expandedDistributionUnits = optional<qint64>(object, "expanded_distribution_sold", count);
    row.expandedDistributionRoyalties = optional<double>(object, "expanded_distribution_royalties", amount);
    row.preOrderUnits = optional<qint64>(object, "pre_orders_sold", count);
    row.customFormatUnits = optionalMap<qint64>(object, "custom_format_units", count);
    row.customFormatRoyalties = optionalMap<double>(object, "custom_format_royalties", amount);
    return row;
}

PublisherAccount account(const QJsonObject &object)
{
    PublisherAccount account;
    account.accountID = requiredText(object, "account_id");
    account.userEmail = requiredText(object, "user_email");
    account.displayName = optional<QString>(object, "display_name", text);
    account.accessType = requiredText(object, "access_type");
    return account;
}

template <typename Body, typename Read>
std::optional<Body> decodeOrReject(const QByteArray &json, Read read)
{
    try {
        return read(topLevelObject(json));
    } catch (const Rejected &) {
        return std::nullopt;
    }
}

} // namespace

std::optional<BookStatsResponse> bookStats(const QByteArray &json)
{
    return decodeOrReject<BookStatsResponse>(json, [](const QJsonObject &object) {
        BookStatsResponse response;
        for (const QJsonObject &rowObject : requiredObjects(object, "table_data")) {
            response.tableData.append(row(rowObject));
        }
        return response;
    });
}

std::optional<AccountsResponse> accounts(const QByteArray &json)
{
    return decodeOrReject<AccountsResponse>(json, [](const QJsonObject &object) {
        AccountsResponse response;
        for (const QJsonObject &accountObject : requiredObjects(object, "accounts")) {
            response.accounts.append(account(accountObject));
        }
        response.latestAppVersion = optional<QString>(object, "latest_app_version", text);
        return response;
    });
}

std::optional<MacAuthExchangeResponse> exchange(const QByteArray &json)
{
    return decodeOrReject<MacAuthExchangeResponse>(json, [](const QJsonObject &object) {
        return MacAuthExchangeResponse{requiredText(object, "api_key"), requiredText(object, "user_email")};
    });
}

std::optional<APIErrorResponse> apiError(const QByteArray &json)
{
    return decodeOrReject<APIErrorResponse>(
        json, [](const QJsonObject &object) { return APIErrorResponse{requiredText(object, "error")}; });
}

} // namespace ReferenceDecoder
