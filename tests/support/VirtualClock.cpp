#include "VirtualClock.h"

struct VirtualClock::Entry {
    QDateTime due;
    std::chrono::milliseconds interval;
    bool repeating;
    std::function<void()> callback;
    quint64 sequence;
    bool active = true;
};

class VirtualClock::Handle final : public ClockTimer
{
public:
    explicit Handle(std::shared_ptr<Entry> entry)
        : m_entry(std::move(entry))
    {}
    ~Handle() override { m_entry->active = false; }

private:
    std::shared_ptr<Entry> m_entry;
};

VirtualClock::VirtualClock(QDateTime start, QTimeZone zone)
    : m_now(std::move(start))
    , m_zone(std::move(zone))
{}

VirtualClock::~VirtualClock() = default;

std::unique_ptr<ClockTimer> VirtualClock::startTimer(std::chrono::milliseconds interval, bool repeating,
                                                     std::function<void()> callback)
{
    auto entry = std::make_shared<Entry>(
        Entry{m_now.addMSecs(interval.count()), interval, repeating, std::move(callback), m_nextSequence++});
    m_entries.append(entry);
    return std::make_unique<Handle>(entry);
}

void VirtualClock::advance(std::chrono::milliseconds step)
{
    const QDateTime target = m_now.addMSecs(step.count());
    while (true) {
        m_entries.removeIf([](const std::shared_ptr<Entry> &entry) { return !entry->active; });
        std::shared_ptr<Entry> next;
        for (const std::shared_ptr<Entry> &entry : std::as_const(m_entries)) {
            if (entry->due <= target
                && (!next || entry->due < next->due || (entry->due == next->due && entry->sequence < next->sequence))) {
                next = entry;
            }
        }
        if (!next) {
            break;
        }
        m_now = std::max(m_now, next->due);
        if (next->repeating) {
            next->due = next->due.addMSecs(std::max<qint64>(next->interval.count(), 1));
            next->sequence = m_nextSequence++;
        } else {
            next->active = false;
        }
        // A copy: the callback may stop its own timer, which must not destroy the function running.
        const std::function<void()> callback = next->callback;
        callback();
    }
    m_now = target;
}

int VirtualClock::activeTimerCount() const
{
    return int(std::count_if(m_entries.cbegin(), m_entries.cend(),
                             [](const std::shared_ptr<Entry> &entry) { return entry->active; }));
}
