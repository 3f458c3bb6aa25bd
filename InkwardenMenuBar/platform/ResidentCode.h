#pragma once

#include <QString>

// Hands back the pages of program code and of read-only shared files (fonts) that Inkwarden has
// touched, as the kernel would under memory pressure: they stay in the page cache, and whatever is
// still used comes back with a cheap minor fault at its next use. After the popover is given up,
// this takes Inkwarden back to the working set of an idle process instead of keeping every page
// Qt Quick once ran. Only pages that are identical to their file are dropped: executable private
// mappings (code has no writable copy) and read-only shared mappings.
class ResidentCode
{
public:
    struct Result {
        int mappings = 0;
        qint64 bytes = 0;
    };

    // Reads the mappings from `mapsPath`; returns how many mappings, and how large, were handed back.
    static Result release(const QString &mapsPath = QStringLiteral("/proc/self/maps"));

    // Whether a line of /proc/PID/maps names a mapping that release() hands back.
    static bool isReleasable(const QString &mapsLine);
};
