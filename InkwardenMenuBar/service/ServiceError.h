#pragma once

#include "RoyaltiesError.h"

#include <QNetworkReply>
#include <QString>

#include <variant>

// A failure of the transfer itself (no connection, time-out, cancellation), with the network
// layer's own words.
struct TransportError {
    QNetworkReply::NetworkError code = QNetworkReply::UnknownNetworkError;
    QString description;

    friend bool operator==(const TransportError &, const TransportError &) = default;
};

// Anything a request to the royalties service can fail with, and the one text the user sees for it.
class ServiceError
{
public:
    ServiceError(RoyaltiesError error) // NOLINT(google-explicit-constructor): errors convert freely
        : m_error(std::move(error))
    {}
    ServiceError(TransportError error) // NOLINT(google-explicit-constructor)
        : m_error(std::move(error))
    {}

    const RoyaltiesError *royaltiesError() const { return std::get_if<RoyaltiesError>(&m_error); }
    const TransportError *transportError() const { return std::get_if<TransportError>(&m_error); }

    QString localizedDescription() const;

    friend bool operator==(const ServiceError &, const ServiceError &) = default;

private:
    std::variant<RoyaltiesError, TransportError> m_error;
};

// A value or the error that kept it from coming.
template <typename T>
class ServiceResult
{
public:
    ServiceResult(T value) // NOLINT(google-explicit-constructor)
        : m_result(std::in_place_index<0>, std::move(value))
    {}
    ServiceResult(ServiceError error) // NOLINT(google-explicit-constructor)
        : m_result(std::in_place_index<1>, std::move(error))
    {}
    ServiceResult(RoyaltiesError error) // NOLINT(google-explicit-constructor)
        : ServiceResult(ServiceError(std::move(error)))
    {}
    ServiceResult(TransportError error) // NOLINT(google-explicit-constructor)
        : ServiceResult(ServiceError(std::move(error)))
    {}

    bool hasValue() const { return m_result.index() == 0; }
    explicit operator bool() const { return hasValue(); }
    const T &value() const { return std::get<0>(m_result); }
    T &value() { return std::get<0>(m_result); }
    const ServiceError &error() const { return std::get<1>(m_result); }

private:
    std::variant<T, ServiceError> m_result;
};
