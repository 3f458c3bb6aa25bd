#pragma once

#include <QStringView>

// Compares two version texts the way people read them: runs of digits as numbers (1.10 is newer
// than 1.9, 2.0 equals 2.00), everything else character by character. No locale is involved.
// Negative when `lhs` is older, zero when equal, positive when newer.
int compareVersions(QStringView lhs, QStringView rhs);
