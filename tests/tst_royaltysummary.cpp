#include <QTest>
class Testroyaltysummary : public QObject { Q_OBJECT };
QTEST_GUILESS_MAIN(Testroyaltysummary)
#include "tst_royaltysummary.moc"
