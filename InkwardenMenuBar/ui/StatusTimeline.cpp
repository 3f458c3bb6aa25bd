#include "StatusTimeline.h"

#include "model/Clock.h"
#include "store/RoyaltiesStore.h"

using namespace std::chrono_literals;

StatusTimeline::StatusTimeline(QObject *parent)
    : QObject(parent)
{}

StatusTimeline::~StatusTimeline() = default;

void StatusTimeline::setStore(RoyaltiesStore *store)
{
    if (m_store == store) {
        return;
    }
    if (m_store) {
        QObject::disconnect(m_store, nullptr, this, nullptr);
    }
    m_store = store;
    if (m_store) {
        // The lines also change with these, between two ticks.
        for (const auto signal : {&RoyaltiesStore::lastUpdatedChanged, &RoyaltiesStore::nextRefreshAtChanged,
                                  &RoyaltiesStore::isLoadingChanged, &RoyaltiesStore::isNetworkAvailableChanged}) {
            QObject::connect(m_store, signal, this, &StatusTimeline::update);
        }
        QObject::connect(m_store, &QObject::destroyed, this, [this] { m_ticker.reset(); });
    }
    restartTicking();
    update();
    Q_EMIT storeChanged();
}

void StatusTimeline::setRunning(bool running)
{
    if (m_running == running) {
        return;
    }
    m_running = running;
    restartTicking();
    update();
    Q_EMIT runningChanged();
}

void StatusTimeline::restartTicking()
{
    m_ticker.reset();
    if (m_store && m_running) {
        m_ticker = m_store->clock().startTimer(1s, true, [this] { update(); });
    }
}

void StatusTimeline::update()
{
    QString lastUpdated;
    QString nextRefresh;
    if (m_store) {
        const QDateTime now = m_store->clock().now();
        lastUpdated = m_store->lastUpdatedText(now);
        nextRefresh = m_store->nextRefreshText(now);
    }
    if (lastUpdated == m_lastUpdatedText && nextRefresh == m_nextRefreshText) {
        return;
    }
    m_lastUpdatedText = lastUpdated;
    m_nextRefreshText = nextRefresh;
    Q_EMIT textsChanged();
}
