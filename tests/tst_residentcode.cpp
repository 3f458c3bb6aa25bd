// Handing back touched code and read-only pages: only files mapped without write access are chosen,
// pages the process changed stay as they are, the resident size drops, and the program runs on.
#include "platform/ResidentCode.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// Resident kilobytes of this process's executable mappings of `library`, from /proc/self/smaps.
qint64 residentCodeKiB(const QString &library)
{
    QFile smaps(QStringLiteral("/proc/self/smaps"));
    if (!smaps.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return -1;
    }
    static const QRegularExpression header(QStringLiteral("^[0-9a-f]+-[0-9a-f]+ (\\S+) .*"));
    bool inside = false;
    qint64 total = 0;
    for (const QString &line : QString::fromLocal8Bit(smaps.readAll()).split(u'\n')) {
        const QRegularExpressionMatch match = header.match(line);
        if (match.hasMatch()) {
            inside = match.captured(1) == QLatin1String("r-xp") && line.contains(library);
        } else if (inside && line.startsWith(QLatin1String("Rss:"))) {
            total += line.section(u':', 1).trimmed().section(u' ', 0, 0).toLongLong();
        }
    }
    return total;
}

// Whether the page at `address` is mapped into this process now, from /proc/self/pagemap.
bool isPresent(const void *address)
{
    QFile pageMap(QStringLiteral("/proc/self/pagemap"));
    if (!pageMap.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const auto page = quintptr(address) / quintptr(sysconf(_SC_PAGESIZE));
    quint64 entry = 0;
    if (!pageMap.seek(qint64(page * sizeof(entry)))
        || pageMap.read(reinterpret_cast<char *>(&entry), sizeof(entry)) != sizeof(entry)) {
        return false;
    }
    return (entry >> 63) != 0;
}

} // namespace

class TestResidentCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyMappingsIdenticalToTheirFilesAreChosen_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("releasable");
        QTest::newRow("code") << QStringLiteral(
            "7f0000001000-7f0000200000 r-xp 00001000 08:01 123 /usr/lib/x86_64-linux-gnu/libQt6Quick.so.6.4.2")
                              << true;
        QTest::newRow("font") << QStringLiteral(
            "7f0000300000-7f0000340000 r--s 00000000 08:01 456 /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")
                              << true;
        // Constants; those of its pages that relocation changed are told apart page by page.
        QTest::newRow("read-only data") << QStringLiteral(
            "7f0000200000-7f0000210000 r--p 00200000 08:01 123 /usr/lib/libQt6Quick.so.6")
                                        << true;
        QTest::newRow("writable data") << QStringLiteral(
            "7f0000210000-7f0000212000 rw-p 00210000 08:01 123 /usr/lib/libQt6Quick.so.6")
                                       << false;
        QTest::newRow("heap") << QStringLiteral("55d000000000-55d000100000 rw-p 00000000 00:00 0 [heap]") << false;
        QTest::newRow("vdso") << QStringLiteral("7ffd00000000-7ffd00002000 r-xp 00000000 00:00 0 [vdso]") << false;
        QTest::newRow("anonymous code") << QStringLiteral("7f0000500000-7f0000501000 r-xp 00000000 00:00 0") << false;
        QTest::newRow("empty") << QString() << false;
    }

    void onlyMappingsIdenticalToTheirFilesAreChosen()
    {
        QFETCH(QString, line);
        QFETCH(bool, releasable);
        QCOMPARE(ResidentCode::isReleasable(line), releasable);
    }

    void touchedCodeIsHandedBackAndRunsOn()
    {
        const QString core = QStringLiteral("libQt6Core.so");
        // Qt's own code is resident now: this test runs on it.
        const qint64 before = residentCodeKiB(core);
        QVERIFY(before > 0);
        const ResidentCode::Result result = ResidentCode::release();
        QVERIFY(result.mappings > 0);
        QVERIFY(result.bytes > 0);
        const qint64 after = residentCodeKiB(core);
        // Reading the list back runs Qt again, so some of it is resident again by then.
        QVERIFY2(after * 10 < before * 9,
                 qPrintable(QStringLiteral("%1 kB before, %2 kB after").arg(before).arg(after)));
        // What is needed comes back at its next use.
        QCOMPARE(QString::number(12345).toInt(), 12345);
        QVERIFY(QRegularExpression(QStringLiteral("a+b")).match(QStringLiteral("caab")).hasMatch());
    }

    void pagesTheProcessChangedStayAndUnchangedOnesGo()
    {
        // A private file mapping, read-only by now, as a library's relocated constants are: its
        // first page was written (a private copy), its second only read.
        const long pageSize = sysconf(_SC_PAGESIZE);
        QTemporaryFile file;
        QVERIFY(file.open());
        QVERIFY(file.write(QByteArray(int(pageSize * 2), 'f')) == pageSize * 2);
        QVERIFY(file.flush());
        void *mapped = mmap(nullptr, size_t(pageSize * 2), PROT_READ | PROT_WRITE, MAP_PRIVATE, int(file.handle()), 0);
        QVERIFY(mapped != MAP_FAILED);
        auto *bytes = static_cast<volatile char *>(mapped);
        bytes[0] = 'w';
        QCOMPARE(bytes[pageSize], 'f');
        QVERIFY(mprotect(mapped, size_t(pageSize * 2), PROT_READ) == 0);
        QVERIFY(isPresent(mapped));
        QVERIFY(isPresent(static_cast<char *>(mapped) + pageSize));

        const ResidentCode::Result result = ResidentCode::release();
        QVERIFY(result.mappings > 0);

        QVERIFY(isPresent(mapped));
        QCOMPARE(bytes[0], 'w');
        QVERIFY(!isPresent(static_cast<char *>(mapped) + pageSize));
        // And it reads back from the file.
        QCOMPARE(bytes[pageSize], 'f');
        munmap(mapped, size_t(pageSize * 2));
    }

    void anUnreadableListReleasesNothing()
    {
        const ResidentCode::Result result = ResidentCode::release(QStringLiteral("/nonexistent/maps"));
        QCOMPARE(result.mappings, 0);
        QCOMPARE(result.bytes, 0);
    }
};

QTEST_GUILESS_MAIN(TestResidentCode)
#include "tst_residentcode.moc"
