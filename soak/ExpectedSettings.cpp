#include "ExpectedSettings.h"

#include "store/RoyaltiesStore.h"

namespace {

QString listText(const QList<SalesBreakdownMetric> &metrics)
{
    QStringList names;
    for (const SalesBreakdownMetric metric : metrics) {
        names.append(metric.rawValue());
    }
    return u'[' + names.join(QStringLiteral(", ")) + u']';
}

QString setText(const QSet<SalesBreakdownMetric> &metrics)
{
    QStringList names;
    for (const SalesBreakdownMetric metric : metrics) {
        names.append(metric.rawValue());
    }
    names.sort();
    return u'{' + names.join(QStringLiteral(", ")) + u'}';
}

template <typename T>
void compare(QStringList &differences, const QString &name, const T &expected, const T &actual,
             const QString &expectedText, const QString &actualText)
{
    if (!(expected == actual)) {
        differences.append(QStringLiteral("%1 is %2, expected %3").arg(name, actualText, expectedText));
    }
}

} // namespace

QStringList ExpectedSettings::differences(const RoyaltiesStore &store, const QString &keyringKey) const
{
    QStringList differences;
    const QString expectedKey = signedIn ? apiKey : QString();
    if (keyringKey != expectedKey) {
        differences.append(signedIn ? QStringLiteral("the keyring lost the API key")
                                    : QStringLiteral("the keyring still holds a key after signing out"));
    }
    if (store.isConnected() != signedIn) {
        differences.append(signedIn ? QStringLiteral("the store is not connected")
                                    : QStringLiteral("the store is connected after signing out"));
    }
    compare(differences, QStringLiteral("serverURL"), serverURL, store.serverURL(), serverURL, store.serverURL());
    compare(differences, QStringLiteral("accountID"), accountID, store.accountID(), accountID, store.accountID());
    compare(differences, QStringLiteral("refreshMinutes"), refreshMinutes, store.refreshMinutes(),
            QString::number(refreshMinutes), QString::number(store.refreshMinutes()));
    compare(differences, QStringLiteral("selectedPeriod"), period, store.selectedPeriod(), period.rawValue(),
            store.selectedPeriod().rawValue());
    compare(differences, QStringLiteral("displayedRoyalty"), displayedRoyalty, store.displayedRoyalty(),
            displayedRoyalty.rawValue(), store.displayedRoyalty().rawValue());
    compare(differences, QStringLiteral("salesMetricOrder"), salesMetricOrder, store.salesMetricOrder(),
            listText(salesMetricOrder), listText(store.salesMetricOrder()));
    compare(differences, QStringLiteral("hiddenSalesMetrics"), hiddenSalesMetrics, store.hiddenSalesMetrics(),
            setText(hiddenSalesMetrics), setText(store.hiddenSalesMetrics()));
    return differences;
}
