#include "ServerAddress.h"

namespace ServerAddress {

QString withoutSlashesAtEnds(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text.at(begin) == u'/') {
        ++begin;
    }
    while (end > begin && text.at(end - 1) == u'/') {
        --end;
    }
    return text.mid(begin, end - begin);
}

QString pagePath(const QString &basePath, const QString &page)
{
    const QString base = withoutSlashesAtEnds(basePath);
    return base.isEmpty() ? page : u'/' + base + page;
}

} // namespace ServerAddress
