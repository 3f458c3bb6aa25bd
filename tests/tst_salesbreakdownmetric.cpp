#include <QTest>
class Testsalesbreakdownmetric : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(Testsalesbreakdownmetric)
#include "tst_salesbreakdownmetric.moc"
