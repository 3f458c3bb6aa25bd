#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

// Reads the members of one JSON object with the service's strict typing: a missing key or a null
// leaves an optional member absent, while a value of the wrong JSON type (or a fractional number for
// an integer) marks the whole reader as failed. The first failure sticks; callers build their value
// and then ask `failed()` once, so no partial body ever escapes.
class JsonObjectReader
{
public:
    explicit JsonObjectReader(QJsonObject object);

    bool failed() const { return m_failed; }

    std::optional<QString> optionalString(QLatin1String key);
    std::optional<double> optionalDouble(QLatin1String key);
    std::optional<qint64> optionalInteger(QLatin1String key);
    std::optional<QMap<QString, qint64>> optionalIntegerMap(QLatin1String key);
    std::optional<QMap<QString, double>> optionalDoubleMap(QLatin1String key);

    QString requiredString(QLatin1String key);

    // A required array of objects, each read by `element(JsonObjectReader &)`.
    template <typename Element, typename ReadElement>
    QList<Element> requiredObjectArray(QLatin1String key, ReadElement element);

    // Parses `json` and hands its top-level object to `read`; nothing when the bytes are not a JSON
    // object or `read` failed on any member.
    template <typename Body, typename ReadBody>
    static std::optional<Body> decodeDocument(const QByteArray &json, ReadBody read);

private:
    // An object of names to values; a value that `convert` refuses fails the reader.
    template <typename Value, typename Convert>
    std::optional<QMap<QString, Value>> optionalMap(QLatin1String key, Convert convert);
    // Present and not null; otherwise the member is absent.
    std::optional<QJsonValue> presentValue(QLatin1String key) const;
    static std::optional<QJsonObject> parseObject(const QByteArray &json);
    void fail() { m_failed = true; }

    QJsonObject m_object;
    bool m_failed = false;
};

template <typename Element, typename ReadElement>
QList<Element> JsonObjectReader::requiredObjectArray(QLatin1String key, ReadElement element)
{
    const std::optional<QJsonValue> value = presentValue(key);
    if (!value || !value->isArray()) {
        fail();
        return {};
    }
    const QJsonArray array = value->toArray();
    QList<Element> elements;
    elements.reserve(array.size());
    for (const QJsonValueConstRef item : array) {
        if (!item.isObject()) {
            fail();
            return {};
        }
        JsonObjectReader reader(item.toObject());
        elements.append(element(reader));
        if (reader.failed()) {
            fail();
            return {};
        }
    }
    return elements;
}

template <typename Body, typename ReadBody>
std::optional<Body> JsonObjectReader::decodeDocument(const QByteArray &json, ReadBody read)
{
    std::optional<QJsonObject> object = parseObject(json);
    if (!object) {
        return std::nullopt;
    }
    JsonObjectReader reader(std::move(*object));
    Body body = read(reader);
    if (reader.failed()) {
        return std::nullopt;
    }
    return body;
}
