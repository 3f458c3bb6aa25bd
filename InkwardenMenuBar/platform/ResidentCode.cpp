#include "ResidentCode.h"

#include <QFile>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

// One 64-bit entry of /proc/PID/pagemap for each virtual page.
constexpr quint64 pagePresent = quint64(1) << 63;
// A page of the file's page cache (or shared memory), not a private copy the process has written.
constexpr quint64 pageIsFile = quint64(1) << 61;

struct Range {
    quintptr start = 0;
    quintptr end = 0;
};

// Drops the present file pages of [range.start, range.end); returns the bytes dropped.
qint64 releaseFilePages(QFile &pageMap, Range range, quintptr pageSize)
{
    const quintptr pages = (range.end - range.start) / pageSize;
    std::vector<quint64> entries(pages);
    const qint64 wanted = qint64(pages * sizeof(quint64));
    if (!pageMap.seek(qint64(range.start / pageSize * sizeof(quint64)))
        || pageMap.read(reinterpret_cast<char *>(entries.data()), wanted) != wanted) {
        return 0;
    }
    qint64 released = 0;
    quintptr run = 0;
    auto flush = [&](quintptr index) {
        if (index > run) {
            const quintptr from = range.start + run * pageSize;
            const quintptr length = (index - run) * pageSize;
            // The address is one of our own mappings, read from /proc/self/maps.
            // NOLINTNEXTLINE(performance-no-int-to-ptr)
            if (madvise(reinterpret_cast<void *>(from), length, MADV_DONTNEED) == 0) {
                released += qint64(length);
            }
        }
        run = index + 1;
    };
    for (quintptr index = 0; index < pages; ++index) {
        const quint64 entry = entries[index];
        if ((entry & pagePresent) == 0 || (entry & pageIsFile) == 0) {
            flush(index);
        }
    }
    flush(pages);
    return released;
}

} // namespace

bool ResidentCode::isReleasable(const QString &mapsLine)
{
    // "start-end perms offset dev inode path"
    const QStringList fields = mapsLine.simplified().split(u' ');
    if (fields.size() < 6 || !fields.at(5).startsWith(u'/')) {
        return false;
    }
    const QString &permissions = fields.at(1);
    return permissions.size() == 4 && permissions.at(0) == u'r' && permissions.at(1) == u'-';
}

ResidentCode::Result ResidentCode::release(const QString &mapsPath, const QString &pageMapPath)
{
    Result result;
    QFile maps(mapsPath);
    QFile pageMap(pageMapPath);
    if (!maps.open(QIODevice::ReadOnly | QIODevice::Text)
        || !pageMap.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return result;
    }
    const auto pageSize = quintptr(sysconf(_SC_PAGESIZE));
    // Read whole first: the list changes as the pages go.
    const QStringList lines = QString::fromLocal8Bit(maps.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        if (!isReleasable(line)) {
            continue;
        }
        const QStringList bounds = line.section(u' ', 0, 0).split(u'-');
        bool startOk = false;
        bool endOk = false;
        const Range range{quintptr(bounds.value(0).toULongLong(&startOk, 16)),
                          quintptr(bounds.value(1).toULongLong(&endOk, 16))};
        if (!startOk || !endOk || range.end <= range.start || range.start % pageSize != 0) {
            continue;
        }
        if (const qint64 released = releaseFilePages(pageMap, range, pageSize); released > 0) {
            ++result.mappings;
            result.bytes += released;
        }
    }
    return result;
}

ResidentCode::Result ResidentCode::releaseAfterWork()
{
    // Freed memory goes back to the allocator in many small pieces; only a trim hands the free
    // pages back to the system.
    malloc_trim(0);
    return release();
}
