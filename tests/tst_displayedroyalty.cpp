#include <QTest>
class Testdisplayedroyalty : public QObject { Q_OBJECT };
QTEST_GUILESS_MAIN(Testdisplayedroyalty)
#include "tst_displayedroyalty.moc"
