#include <QTest>
class Testwireformat : public QObject { Q_OBJECT };
QTEST_GUILESS_MAIN(Testwireformat)
#include "tst_wireformat.moc"
