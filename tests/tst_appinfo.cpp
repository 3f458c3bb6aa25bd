#include <QTest>
class Testappinfo : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(Testappinfo)
#include "tst_appinfo.moc"
