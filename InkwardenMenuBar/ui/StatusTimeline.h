#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqml.h>

#include <memory>

class ClockTimer;
class RoyaltiesStore;

// The earnings card's two status lines, "Refreshed 2m ago" and "Next refresh in 04:07", read from
// the store at the store's own "now" and read again every second while `running`, so the countdown
// moves. The store's clock drives it: tests step a virtual clock and watch the lines change.
class StatusTimeline : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(RoyaltiesStore *store READ store WRITE setStore NOTIFY storeChanged)
    Q_PROPERTY(bool running READ running WRITE setRunning NOTIFY runningChanged)
    Q_PROPERTY(QString lastUpdatedText READ lastUpdatedText NOTIFY textsChanged)
    Q_PROPERTY(QString nextRefreshText READ nextRefreshText NOTIFY textsChanged)

public:
    explicit StatusTimeline(QObject *parent = nullptr);
    ~StatusTimeline() override;

    RoyaltiesStore *store() const { return m_store; }
    void setStore(RoyaltiesStore *store);
    bool running() const { return m_running; }
    void setRunning(bool running);
    const QString &lastUpdatedText() const { return m_lastUpdatedText; }
    const QString &nextRefreshText() const { return m_nextRefreshText; }

Q_SIGNALS:
    void storeChanged();
    void runningChanged();
    void textsChanged();

private:
    void restartTicking();
    void update();

    QPointer<RoyaltiesStore> m_store;
    bool m_running = true;
    std::unique_ptr<ClockTimer> m_ticker;
    QString m_lastUpdatedText;
    QString m_nextRefreshText;
};
