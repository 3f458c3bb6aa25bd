#include "model/MoneyFormatter.h"
#include "model/RoyaltySummary.h"

#include <QTest>

class TestMoneyFormatter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void probe() {
        for (const char *loc : {"en_US", "en_GB", "de_DE", "fr_FR", "ja_JP"}) {
            MoneyFormatter f{QLocale(QString::fromLatin1(loc))};
            for (const char *cur : {"USD", "usd", "CAD", "EUR", "GBP", "JPY", "EURO", "", "XYZ"}) {
                const QString c = QString::fromLatin1(cur);
                qInfo().noquote() << loc << cur << f.money(1234.567, c, false) << f.money(1234.567, c, true)
                                  << f.money(-1000, c, true) << f.money(999.994, c, true) << f.currencySymbol(c);
            }
            RoyaltySummary s;
            s.gross = 12345.678;
            qInfo().noquote() << f.menuBarMoneyParts(s, DisplayedRoyalty::gross, true)->amount;
        }
    }
};

QTEST_GUILESS_MAIN(TestMoneyFormatter)
#include "tst_moneyformatter.moc"
