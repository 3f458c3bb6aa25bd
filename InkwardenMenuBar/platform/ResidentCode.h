#pragma once

#include <QString>

// Hands back the pages of program code and read-only files (libraries' constant data, ICU's data,
// fonts) that Inkwarden has touched, as the kernel would under memory pressure: they stay in the
// page cache, and whatever is still used comes back with a cheap minor fault at its next use. After
// starting up, and after the popover is given up, this takes Inkwarden back to the working set of an
// idle process instead of keeping every page it once ran or read. Only pages identical to their
// file are dropped: the kernel's page map tells them apart from pages the process has changed
// (relocated constants, a debugger's breakpoints), which stay.
class ResidentCode
{
public:
    struct Result {
        int mappings = 0;
        qint64 bytes = 0;
    };

    // Reads the mappings from `mapsPath` and the page map from `pageMapPath`; returns how many
    // mappings had pages handed back, and how many bytes.
    static Result release(const QString &mapsPath = QStringLiteral("/proc/self/maps"),
                          const QString &pageMapPath = QStringLiteral("/proc/self/pagemap"));

    // After a burst of work (starting up, the popover given up): the allocator's free pages go back
    // to the system, then the pages as release() does.
    static Result releaseAfterWork();

    // Whether a line of /proc/PID/maps names a mapping whose unchanged pages release() hands back:
    // a file mapped without write access.
    static bool isReleasable(const QString &mapsLine);
};
