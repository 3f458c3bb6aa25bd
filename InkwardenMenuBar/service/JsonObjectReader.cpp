#include "JsonObjectReader.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

// QJsonValue keeps integers written without a fraction or exponent exactly (beyond 2^53 too) and
// converts an integral double that fits into 64 bits; anything else falls back to the default.
// Two different defaults therefore tell a real integer from a fallback.
std::optional<qint64> exactInteger(const QJsonValue &value)
{
    if (!value.isDouble()) {
        return std::nullopt;
    }
    const qint64 integer = value.toInteger(0);
    if (integer != value.toInteger(1)) {
        return std::nullopt;
    }
    return integer;
}

// Qt's parser drops a U+FEFF that opens a string when it comes as raw UTF-8, so two format names
// that differ only by it would merge. Inside a string the escape means the same character and
// survives; a mark that opens the whole document is left for the parser to skip.
QByteArray withEscapedByteOrderMarks(const QByteArray &json)
{
    static const QByteArray mark("\xEF\xBB\xBF");
    if (json.indexOf(mark, 1) < 0) {
        return json;
    }
    QByteArray escaped = json;
    for (qsizetype at = escaped.indexOf(mark, 1); at >= 0; at = escaped.indexOf(mark, at + 6)) {
        escaped.replace(at, mark.size(), QByteArrayLiteral("\\ufeff"));
    }
    return escaped;
}

} // namespace

JsonObjectReader::JsonObjectReader(QJsonObject object)
    : m_object(std::move(object))
{}

std::optional<QJsonValue> JsonObjectReader::presentValue(QLatin1String key) const
{
    const QJsonValue value = m_object.value(key);
    if (value.isUndefined() || value.isNull()) {
        return std::nullopt;
    }
    return value;
}

std::optional<QJsonObject> JsonObjectReader::parseObject(const QByteArray &json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(withEscapedByteOrderMarks(json), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        return std::nullopt;
    }
    return document.object();
}

std::optional<QString> JsonObjectReader::optionalString(QLatin1String key)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value) {
        return std::nullopt;
    }
    if (!value->isString()) {
        fail();
        return std::nullopt;
    }
    return value->toString();
}

std::optional<double> JsonObjectReader::optionalDouble(QLatin1String key)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value) {
        return std::nullopt;
    }
    if (!value->isDouble()) {
        fail();
        return std::nullopt;
    }
    return value->toDouble();
}

std::optional<qint64> JsonObjectReader::optionalInteger(QLatin1String key)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value) {
        return std::nullopt;
    }
    const std::optional<qint64> integer = exactInteger(*value);
    if (!integer) {
        fail();
    }
    return integer;
}

template <typename Value, typename Convert>
std::optional<QMap<QString, Value>> JsonObjectReader::optionalMap(QLatin1String key, Convert convert)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value) {
        return std::nullopt;
    }
    if (!value->isObject()) {
        fail();
        return std::nullopt;
    }
    QMap<QString, Value> map;
    const QJsonObject object = value->toObject();
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const std::optional<Value> converted = convert(it.value());
        if (!converted) {
            fail();
            return std::nullopt;
        }
        map.insert(it.key(), *converted);
    }
    return map;
}

std::optional<QMap<QString, qint64>> JsonObjectReader::optionalIntegerMap(QLatin1String key)
{
    return optionalMap<qint64>(key, exactInteger);
}

std::optional<QMap<QString, double>> JsonObjectReader::optionalDoubleMap(QLatin1String key)
{
    return optionalMap<double>(key, [](const QJsonValue &value) {
        return value.isDouble() ? std::optional<double>(value.toDouble()) : std::nullopt;
    });
}

QString JsonObjectReader::requiredString(QLatin1String key)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value || !value->isString()) {
        fail();
        return {};
    }
    return value->toString();
}
