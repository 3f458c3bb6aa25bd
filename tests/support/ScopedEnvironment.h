#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

// Sets an environment variable for one scope, then puts back what was there. Nothing as the value
// unsets the variable.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char *name, const std::optional<QString> &value)
        : m_name(name)
        , m_hadValue(qEnvironmentVariableIsSet(name))
        , m_oldValue(qgetenv(name))
    {
        if (value) {
            qputenv(name, value->toLocal8Bit());
        } else {
            qunsetenv(name);
        }
    }
    ~ScopedEnvironment()
    {
        if (m_hadValue) {
            qputenv(m_name, m_oldValue);
        } else {
            qunsetenv(m_name);
        }
    }
    ScopedEnvironment(const ScopedEnvironment &) = delete;
    ScopedEnvironment &operator=(const ScopedEnvironment &) = delete;

private:
    const char *m_name;
    bool m_hadValue;
    QByteArray m_oldValue;
};
