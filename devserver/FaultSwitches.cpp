#include "FaultSwitches.h"

#include <QHttpServerResponder>
#include <QJsonValue>
#include <QMetaEnum>

namespace {

bool isHeaderSafe(const QByteArray &value)
{
    return !value.isEmpty() && !value.contains('\r') && !value.contains('\n');
}

std::optional<int> parseNonNegative(QStringView text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && value >= 0 ? std::optional<int>(value) : std::nullopt;
}

template <typename T>
std::optional<T> fail(QString *error, const QString &message)
{
    if (error) {
        *error = message;
    }
    return std::nullopt;
}

} // namespace

bool Fault::isActive() const
{
    return replacesReply() || delayMs > 0;
}

bool Fault::replacesReply() const
{
    return status.has_value() || malformedBody || emptyBody || htmlBody || body.has_value() || hang || reset
           || retryAfter.has_value();
}

HttpReply Fault::reply() const
{
    const int code = status.value_or(retryAfter ? 429 : 200);
    HttpReply answer;
    if (emptyBody || code == 204 || code == 304) {
        answer.status = code;
    } else if (malformedBody) {
        answer = {code, QByteArrayLiteral("application/json"), {}, malformedBodyBytes()};
    } else if (body) {
        answer = {code, QByteArrayLiteral("application/json"), {}, *body};
    } else if (htmlBody) {
        answer = {code,
                  QByteArrayLiteral("text/html; charset=utf-8"),
                  {},
                  QByteArrayLiteral("<!DOCTYPE html><html><head><title>Error</title></head><body><h1>")
                      + QByteArray::number(code) + QByteArrayLiteral("</h1><p>The gateway failed.</p></body></html>")};
    } else {
        answer = HttpReply::error(code, QStringLiteral("Injected failure: HTTP %1.").arg(code));
    }
    if (retryAfter) {
        answer.headers.append({QByteArrayLiteral("Retry-After"), *retryAfter});
    }
    return answer;
}

QByteArray Fault::malformedBodyBytes()
{
    return QByteArrayLiteral("{\"table_data\": [{\"currency\": \"USD\", \"gross_royalty\": 12.5");
}

QJsonObject Fault::toJson() const
{
    QJsonObject object;
    if (status) {
        object.insert(QStringLiteral("status"), *status);
    }
    if (malformedBody) {
        object.insert(QStringLiteral("malformed"), true);
    }
    if (emptyBody) {
        object.insert(QStringLiteral("empty"), true);
    }
    if (htmlBody) {
        object.insert(QStringLiteral("html"), true);
    }
    if (body) {
        object.insert(QStringLiteral("body"), QString::fromUtf8(*body));
    }
    if (delayMs > 0) {
        object.insert(QStringLiteral("delay_ms"), delayMs);
    }
    if (hang) {
        object.insert(QStringLiteral("hang"), true);
    }
    if (reset) {
        object.insert(QStringLiteral("reset"), true);
    }
    if (retryAfter) {
        object.insert(QStringLiteral("retry_after"), QString::fromLatin1(*retryAfter));
    }
    if (remainingUses) {
        object.insert(QStringLiteral("times"), *remainingUses);
    }
    return object;
}

QString Fault::toText() const
{
    QStringList parts;
    if (status) {
        parts.append(QStringLiteral("status:%1").arg(*status));
    }
    if (malformedBody) {
        parts.append(QStringLiteral("malformed"));
    }
    if (emptyBody) {
        parts.append(QStringLiteral("empty"));
    }
    if (htmlBody) {
        parts.append(QStringLiteral("html"));
    }
    if (delayMs > 0) {
        parts.append(QStringLiteral("delay:%1").arg(delayMs));
    }
    if (hang) {
        parts.append(QStringLiteral("hang"));
    }
    if (reset) {
        parts.append(QStringLiteral("reset"));
    }
    if (remainingUses) {
        parts.append(QStringLiteral("times:%1").arg(*remainingUses));
    }
    if (retryAfter) {
        parts.append(QStringLiteral("retry-after:") + QString::fromLatin1(*retryAfter));
    } else if (body) {
        parts.append(QStringLiteral("body:") + QString::fromUtf8(*body));
    }
    return parts.isEmpty() ? QStringLiteral("off") : parts.join(u',');
}

std::optional<Fault> Fault::fromJson(const QJsonObject &object, QString *error)
{
    Fault fault;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QString key = it.key();
        const QJsonValue value = it.value();
        if (key == QLatin1String("status")) {
            const int code = value.toInt(-1);
            if (!value.isDouble() || !FaultSwitches::isWritableStatus(code)) {
                return fail<Fault>(error, QStringLiteral("\"status\" must be an HTTP status code."));
            }
            fault.status = code;
        } else if (key == QLatin1String("body")) {
            if (!value.isString()) {
                return fail<Fault>(error, QStringLiteral("\"body\" must be text."));
            }
            fault.body = value.toString().toUtf8();
        } else if (key == QLatin1String("malformed") || key == QLatin1String("empty") || key == QLatin1String("hang")
                   || key == QLatin1String("reset") || key == QLatin1String("html")) {
            if (!value.isBool()) {
                return fail<Fault>(error, QStringLiteral("\"%1\" must be true or false.").arg(key));
            }
            bool &flag = key == QLatin1String("html")        ? fault.htmlBody
                         : key == QLatin1String("malformed") ? fault.malformedBody
                         : key == QLatin1String("empty")     ? fault.emptyBody
                         : key == QLatin1String("hang")      ? fault.hang
                                                             : fault.reset;
            flag = value.toBool();
        } else if (key == QLatin1String("delay_ms")) {
            if (!value.isDouble() || value.toInt(-1) < 0) {
                return fail<Fault>(error, QStringLiteral("\"delay_ms\" must be a whole number of milliseconds."));
            }
            fault.delayMs = value.toInt();
        } else if (key == QLatin1String("retry_after")) {
            const QByteArray text =
                value.isDouble() ? QByteArray::number(value.toDouble()) : value.toString().toLatin1();
            if (!isHeaderSafe(text)) {
                return fail<Fault>(error, QStringLiteral("\"retry_after\" must be a header value."));
            }
            fault.retryAfter = text;
        } else if (key == QLatin1String("times")) {
            if (!value.isDouble() || value.toInt(0) < 1) {
                return fail<Fault>(error, QStringLiteral("\"times\" must be a positive whole number."));
            }
            fault.remainingUses = value.toInt();
        } else {
            return fail<Fault>(error, QStringLiteral("Unknown fault switch \"%1\".").arg(key));
        }
    }
    return fault;
}

std::optional<Fault> Fault::fromText(const QString &text, QString *error)
{
    Fault fault;
    if (text.trimmed().compare(QLatin1String("off"), Qt::CaseInsensitive) == 0) {
        return fault;
    }
    QStringView rest(text);
    while (!rest.isEmpty()) {
        QStringView item = rest;
        // "retry-after:" and "body:" keep everything after them: HTTP dates and JSON contain commas.
        if (!rest.trimmed().startsWith(QLatin1String("retry-after:"), Qt::CaseInsensitive)
            && !rest.trimmed().startsWith(QLatin1String("body:"), Qt::CaseInsensitive)) {
            const qsizetype comma = rest.indexOf(u',');
            item = comma < 0 ? rest : rest.first(comma);
            rest = comma < 0 ? QStringView() : rest.sliced(comma + 1);
        } else {
            rest = QStringView();
        }
        item = item.trimmed();
        const qsizetype colon = item.indexOf(u':');
        const QString kind = (colon < 0 ? item : item.first(colon)).trimmed().toString().toLower();
        const QStringView value = colon < 0 ? QStringView() : item.sliced(colon + 1).trimmed();
        const bool needsValue = kind == QLatin1String("status") || kind == QLatin1String("delay")
                                || kind == QLatin1String("retry-after") || kind == QLatin1String("times")
                                || kind == QLatin1String("body");
        if (needsValue == (colon < 0)) {
            return fail<Fault>(error, needsValue ? QStringLiteral("\"%1\" needs a value, as in %1:VALUE.").arg(kind)
                                                 : QStringLiteral("\"%1\" takes no value.").arg(kind));
        }
        if (kind == QLatin1String("status")) {
            const std::optional<int> code = parseNonNegative(value);
            if (!code || !FaultSwitches::isWritableStatus(*code)) {
                return fail<Fault>(error, QStringLiteral("\"%1\" is not an HTTP status code.").arg(value));
            }
            fault.status = code;
        } else if (kind == QLatin1String("malformed")) {
            fault.malformedBody = true;
        } else if (kind == QLatin1String("empty")) {
            fault.emptyBody = true;
        } else if (kind == QLatin1String("html")) {
            fault.htmlBody = true;
        } else if (kind == QLatin1String("body")) {
            fault.body = value.toUtf8();
        } else if (kind == QLatin1String("hang")) {
            fault.hang = true;
        } else if (kind == QLatin1String("reset")) {
            fault.reset = true;
        } else if (kind == QLatin1String("delay")) {
            const std::optional<int> milliseconds = parseNonNegative(value);
            if (!milliseconds) {
                return fail<Fault>(error, QStringLiteral("\"delay\" takes milliseconds, as in delay:500."));
            }
            fault.delayMs = *milliseconds;
        } else if (kind == QLatin1String("times")) {
            const std::optional<int> count = parseNonNegative(value);
            if (!count || *count < 1) {
                return fail<Fault>(error, QStringLiteral("\"times\" takes a positive count, as in times:1."));
            }
            fault.remainingUses = count;
        } else if (kind == QLatin1String("retry-after")) {
            const QByteArray header = value.toLatin1();
            if (!isHeaderSafe(header)) {
                return fail<Fault>(error, QStringLiteral("\"retry-after\" needs a value."));
            }
            fault.retryAfter = header;
        } else {
            return fail<Fault>(error, QStringLiteral("Unknown fault \"%1\".").arg(kind));
        }
    }
    return fault;
}

void FaultSwitches::set(Route route, const Fault &fault)
{
    if (fault.isActive()) {
        m_faults.insert(route, fault);
    } else {
        m_faults.remove(route);
    }
}

void FaultSwitches::clear(Route route)
{
    m_faults.remove(route);
}

void FaultSwitches::clearAll()
{
    m_faults.clear();
}

Fault FaultSwitches::fault(Route route) const
{
    return m_faults.value(route);
}

Fault FaultSwitches::take(Route route)
{
    const auto it = m_faults.find(route);
    if (it == m_faults.end()) {
        return {};
    }
    Fault current = *it;
    if (it->remainingUses && --*it->remainingUses <= 0) {
        m_faults.erase(it);
    }
    current.remainingUses.reset();
    return current;
}

bool FaultSwitches::applySpec(const QString &spec, QString *error)
{
    const qsizetype equals = spec.indexOf(u'=');
    const std::optional<Route> route = routeFromName(QStringView(spec).first(std::max<qsizetype>(equals, 0)).trimmed());
    if (equals < 0 || !route) {
        if (error) {
            *error = QStringLiteral("\"%1\" should look like ROUTE=FAULT, with ROUTE one of "
                                    "stats, accounts, exchange, download, dashboard, connect.")
                         .arg(spec);
        }
        return false;
    }
    const std::optional<Fault> fault = Fault::fromText(spec.sliced(equals + 1), error);
    if (!fault) {
        return false;
    }
    set(*route, *fault);
    return true;
}

bool FaultSwitches::applyJson(const QJsonObject &object, QString *error)
{
    // Check everything first, so a bad entry changes nothing.
    QMap<Route, Fault> changes;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const std::optional<Route> route = routeFromName(it.key());
        if (!route) {
            if (error) {
                *error = QStringLiteral("Unknown route \"%1\".").arg(it.key());
            }
            return false;
        }
        if (it.value().isNull()) {
            changes.insert(*route, Fault{});
            continue;
        }
        if (!it.value().isObject()) {
            if (error) {
                *error = QStringLiteral("The fault of \"%1\" must be an object or null.").arg(it.key());
            }
            return false;
        }
        const std::optional<Fault> fault = Fault::fromJson(it.value().toObject(), error);
        if (!fault) {
            return false;
        }
        changes.insert(*route, *fault);
    }
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        set(it.key(), it.value());
    }
    return true;
}

QJsonObject FaultSwitches::toJson() const
{
    QJsonObject object;
    for (auto it = m_faults.cbegin(); it != m_faults.cend(); ++it) {
        object.insert(routeName(it.key()), it.value().toJson());
    }
    return object;
}

bool FaultSwitches::isWritableStatus(int status)
{
    return status >= 200 && status <= 599
           && QMetaEnum::fromType<QHttpServerResponder::StatusCode>().valueToKey(status) != nullptr;
}
