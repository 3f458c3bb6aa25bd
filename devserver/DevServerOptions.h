#pragma once

#include "DevServerConfig.h"

#include <QHostAddress>
#include <QString>
#include <QStringList>

struct ParsedCommandLine;

// The command line of inkwarden-devserver, parsed and checked before anything listens.
struct DevServerOptions {
    QHostAddress address = QHostAddress(QHostAddress::LocalHost);
    quint16 port = 8000;
    DevServerConfig config;
    QStringList faultSpecs;

    // `arguments` starts with the program name, as QCoreApplication::arguments() does.
    static ParsedCommandLine parse(const QStringList &arguments);
};

struct ParsedCommandLine {
    enum class Outcome { Run, ShowHelp, Invalid };

    Outcome outcome = Outcome::Invalid;
    DevServerOptions options;
    // The help text for ShowHelp, the reason for Invalid.
    QString message;
};
