#include <QTest>
class Testroyaltyperiod : public QObject { Q_OBJECT };
QTEST_GUILESS_MAIN(Testroyaltyperiod)
#include "tst_royaltyperiod.moc"
