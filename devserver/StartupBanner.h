#pragma once

#include <QString>

class DevServer;

// What inkwarden-devserver prints once it listens: where it is, the demo keys and what they see.
QString startupBanner(DevServer &server);
