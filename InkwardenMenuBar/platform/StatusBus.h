#pragma once

#include <QString>

// Where the running Inkwarden publishes its panel status on the session bus: on its own bus name,
// so that `inkwarden --status` and any bar can find it without knowing its process.
namespace StatusBus {

inline QString service()
{
    return QStringLiteral("com.inkwarden.menubar");
}
inline QString objectPath()
{
    return QStringLiteral("/com/inkwarden/menubar/Status");
}
inline QString interface()
{
    return QStringLiteral("com.inkwarden.menubar.Status");
}

} // namespace StatusBus
