#pragma once

#include <QString>

#include <optional>

// Whether Inkwarden starts when the user logs in, as the system sees it.
class LoginItemService
{
public:
    enum class Status : quint8 { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItemService() = default;

    virtual Status status() const = 0;
    // Each gives the reason in words when it fails.
    virtual std::optional<QString> registerItem() = 0;
    virtual std::optional<QString> unregisterItem() = 0;
};
