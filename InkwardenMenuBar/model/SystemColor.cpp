#include "SystemColor.h"

QString systemColorName(SystemColor color)
{
    switch (color) {
    case SystemColor::blue:
        return QStringLiteral("blue");
    case SystemColor::orange:
        return QStringLiteral("orange");
    case SystemColor::brown:
        return QStringLiteral("brown");
    case SystemColor::purple:
        return QStringLiteral("purple");
    case SystemColor::teal:
        return QStringLiteral("teal");
    case SystemColor::indigo:
        return QStringLiteral("indigo");
    case SystemColor::green:
        return QStringLiteral("green");
    case SystemColor::cyan:
        return QStringLiteral("cyan");
    }
    Q_UNREACHABLE();
}
