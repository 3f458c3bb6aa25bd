#include "ResidentCode.h"

#include <QFile>

#include <sys/mman.h>

bool ResidentCode::isReleasable(const QString &mapsLine)
{
    // "start-end perms offset dev inode path"
    const QStringList fields = mapsLine.simplified().split(u' ');
    if (fields.size() < 6 || !fields.at(5).startsWith(u'/')) {
        return false;
    }
    const QString &permissions = fields.at(1);
    return permissions == QLatin1String("r-xp") || permissions == QLatin1String("r--s");
}

ResidentCode::Result ResidentCode::release(const QString &mapsPath)
{
    Result result;
    QFile maps(mapsPath);
    if (!maps.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return result;
    }
    // Read whole first: the list changes as the pages go.
    const QStringList lines = QString::fromLocal8Bit(maps.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        if (!isReleasable(line)) {
            continue;
        }
        const QStringList range = line.section(u' ', 0, 0).split(u'-');
        bool startOk = false;
        bool endOk = false;
        const quintptr start = range.value(0).toULongLong(&startOk, 16);
        const quintptr end = range.value(1).toULongLong(&endOk, 16);
        if (!startOk || !endOk || end <= start) {
            continue;
        }
        if (madvise(reinterpret_cast<void *>(start), end - start, MADV_DONTNEED) == 0) {
            ++result.mappings;
            result.bytes += qint64(end - start);
        }
    }
    return result;
}
