#pragma once

#include <QString>

// The named colours of the desktop palette that the model speaks of. The views map each name to a
// light and a dark shade.
enum class SystemColor : quint8 { blue, orange, brown, purple, teal, indigo, green, cyan };

QString systemColorName(SystemColor color);
