#include "VersionComparison.h"

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The digit run starting at `pos` without its leading zeros, and where it ends.
QStringView digitRun(QStringView text, qsizetype &pos)
{
    const qsizetype start = pos;
    while (pos < text.size() && isDigit(text[pos])) {
        ++pos;
    }
    QStringView run = text.mid(start, pos - start);
    while (run.size() > 1 && run.front() == u'0') {
        run = run.mid(1);
    }
    return run;
}

} // namespace

int compareVersions(QStringView lhs, QStringView rhs)
{
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < lhs.size() && j < rhs.size()) {
        if (isDigit(lhs[i]) && isDigit(rhs[j])) {
            // Numbers of any length compare by their digits: a longer run (without leading zeros)
            // is the larger number, runs of equal length compare as text.
            const QStringView a = digitRun(lhs, i);
            const QStringView b = digitRun(rhs, j);
            if (a.size() != b.size()) {
                return a.size() < b.size() ? -1 : 1;
            }
            if (const int order = a.compare(b); order != 0) {
                return order < 0 ? -1 : 1;
            }
            continue;
        }
        if (lhs[i] != rhs[j]) {
            return lhs[i] < rhs[j] ? -1 : 1;
        }
        ++i;
        ++j;
    }
    if (i < lhs.size()) {
        return 1;
    }
    return j < rhs.size() ? -1 : 0;
}
