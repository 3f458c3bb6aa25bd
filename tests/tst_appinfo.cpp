#include "store/AppInfo.h"

#include <QTemporaryDir>
#include <QTest>

class TestAppInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void compiledInVersionIsTheProjectVersion()
    {
        const AppInfo info = AppInfo::compiledIn();
        QCOMPARE(info.version, std::optional<QString>(QStringLiteral(INKWARDEN_EXPECTED_VERSION)));
    }

    void missingFileGivesNoValues()
    {
        const AppInfo info = AppInfo::fromFile(QStringLiteral("/nonexistent/app-info.json"));
        QVERIFY(!info.version.has_value());
        QVERIFY(!info.defaultServerURL.has_value());
    }

    void emptyOrMistypedValuesAreAbsent()
    {
        const AppInfo info = AppInfo::fromFile(writeFile("{\"version\": \"\", \"defaultServerURL\": 8000}"));
        QVERIFY(!info.version.has_value());
        QVERIFY(!info.defaultServerURL.has_value());
    }

    void corruptFileGivesNoValues()
    {
        const AppInfo info = AppInfo::fromFile(writeFile("{\"version\": \"1.2"));
        QVERIFY(!info.version.has_value());
    }

    void readsBothValues()
    {
        const AppInfo info = AppInfo::fromFile(
            writeFile("{\"version\": \"2.5.1\", \"defaultServerURL\": \"https://royalties.example\"}"));
        QCOMPARE(info.version, std::optional<QString>(QStringLiteral("2.5.1")));
        QCOMPARE(info.defaultServerURL, std::optional<QString>(QStringLiteral("https://royalties.example")));
    }

private:
    QString writeFile(const QByteArray &content)
    {
        QFile file(m_dir.filePath(QStringLiteral("app-info-%1.json").arg(++m_count)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write test file");
        }
        return file.fileName();
    }

    QTemporaryDir m_dir;
    int m_count = 0;
};

QTEST_GUILESS_MAIN(TestAppInfo)
#include "tst_appinfo.moc"
