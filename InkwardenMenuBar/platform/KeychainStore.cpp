#include "KeychainStore.h"

#include "KWalletLock.h"
#include "SecretServiceLock.h"
#include "store/PlatformTexts.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QObject>
#include <QProcessEnvironment>
#include <QStringDecoder>
#include <QTimer>
#include <qt6keychain/keychain.h>

#include <algorithm>
#include <coroutine>
#include <memory>
#include <utility>

// Silent unless a developer turns it on (QT_LOGGING_RULES="inkwarden.*=true"): Inkwarden writes no log.
Q_LOGGING_CATEGORY(lcKeychain, "inkwarden.keychain", QtCriticalMsg)

namespace {

using std::chrono::milliseconds;

// Keeps a job we stopped waiting for. QtKeychain hands the job's own address to libsecret, which has
// no way to cancel, so a started job must live until it finishes; it then deletes itself. The parking
// object is never deleted: a job still running at exit is neither freed under libsecret's feet nor
// reported as a leak.
void abandon(QKeychain::Job *job)
{
    static QObject *const parking = new QObject;
    job->setParent(parking);
    job->setAutoDelete(true);
}

// Starts a job and resumes the awaiting coroutine once the job finishes or the time-out passes,
// whichever comes first; the result says whether it finished. The coroutine is resumed from the event
// loop, never from inside QtKeychain's callback, and every connection dies with the awaiter, so a job
// that finishes late reaches nothing.
class JobCompletion
{
public:
    JobCompletion(QKeychain::Job &job, milliseconds timeout)
        : m_job(&job)
        , m_timeout(timeout)
        , m_state(std::make_unique<State>())
    {}

    bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> awaiting)
    {
        State *state = m_state.get();
        state->awaiting = awaiting;
        state->timer.setSingleShot(true);
        QObject::connect(&state->timer, &QTimer::timeout, &state->context, [state] { state->resumeSoon(); });
        QObject::connect(m_job, &QKeychain::Job::finished, &state->context, [state] {
            state->finished = true;
            state->resumeSoon();
        });
        state->timer.start(m_timeout);
        m_job->start();
    }

    bool await_resume() const noexcept { return m_state->finished; }

private:
    // Held by pointer, so that the awaiter can move while the connections keep their address.
    struct State {
        void resumeSoon()
        {
            timer.stop();
            if (!std::exchange(resumeQueued, true)) {
                QTimer::singleShot(0, &context, [handle = awaiting] { handle.resume(); });
            }
        }

        std::coroutine_handle<> awaiting;
        QObject context;
        QTimer timer;
        bool finished = false;
        bool resumeQueued = false;
    };

    QKeychain::Job *m_job;
    milliseconds m_timeout;
    std::unique_ptr<State> m_state;
};

template <typename JobType>
std::unique_ptr<JobType> makeJob(const QString &service)
{
    auto job = std::make_unique<JobType>(service);
    job->setKey(KeychainStore::apiKeyName());
    job->setInsecureFallback(false);
    // Owned here until it finishes; parked by abandon() when it does not.
    job->setAutoDelete(false);
    return job;
}

// Runs the job until it finishes or times out: QtKeychain's error code, or timedOutStatus once the
// job has been parked (and `job` emptied).
template <typename JobType>
QCoro::Task<int> run(std::unique_ptr<JobType> &job, milliseconds timeout)
{
    // A named awaiter: g++ 12 mishandles temporaries inside a co_await expression.
    JobCompletion completion(*job, timeout);
    if (!co_await std::move(completion)) {
        qCWarning(lcKeychain) << "The keyring did not answer within" << timeout.count() << "ms";
        abandon(job.release());
        co_return KeychainStore::timedOutStatus;
    }
    if (job->error() != QKeychain::NoError && job->error() != QKeychain::EntryNotFound) {
        qCWarning(lcKeychain) << "Keyring error" << job->error() << job->errorString();
    }
    co_return job->error();
}

// The stored bytes as text; bytes that are not valid UTF-8 read as no key.
QString decodeUtf8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    return decoder.hasError() ? QString() : text;
}

// The coroutines take their inputs by value: a save or delete may outlive the store that started it.
QCoro::Task<StoredKey> readKey(QString service, milliseconds timeout)
{
    auto job = makeJob<QKeychain::ReadPasswordJob>(service);
    switch (co_await run(job, timeout)) {
    case QKeychain::NoError: {
        const QString key = decodeUtf8(job->binaryData());
        co_return key.isEmpty() ? StoredKey{} : StoredKey{StoredKey::State::found, key};
    }
    case QKeychain::EntryNotFound:
    // No keyring on this system at all: there is no key to lose, and signing in says why it is
    // not kept.
    case QKeychain::NoBackendAvailable:
        co_return StoredKey{};
    default:
        // A closed or refusing wallet, a keyring that timed out: the key may well be there.
        co_return StoredKey{StoredKey::State::unreachable, {}};
    }
}

QCoro::Task<StoredKey> readKeyAfterAsking(std::shared_ptr<KeyringLock> lock, QString service, milliseconds timeout)
{
    // Named, not temporaries: g++ 12 mishandles temporaries inside a co_await expression.
    QCoro::Task<KeyringLock::ItemState> asking = lock->itemState();
    const KeyringLock::ItemState state = co_await std::move(asking);
    switch (state) {
    case KeyringLock::ItemState::locked:
        co_return StoredKey{StoredKey::State::locked, {}};
    case KeyringLock::ItemState::unreachable:
        co_return StoredKey{StoredKey::State::unreachable, {}};
    case KeyringLock::ItemState::absent:
        // Not read: reading would open a closed KDE wallet, dialog and all, for nothing.
        co_return StoredKey{};
    case KeyringLock::ItemState::noService:
    case KeyringLock::ItemState::unlocked:
        // Read in any case: without the keyring asked, QtKeychain may still find another store.
        break;
    }
    QCoro::Task<StoredKey> reading = readKey(service, timeout);
    const StoredKey stored = co_await std::move(reading);
    if (state == KeyringLock::ItemState::noService && stored.state == StoredKey::State::unreachable) {
        // No keyring on the bus and no other store that answers: there is no keyring here at all,
        // so no key to lose, and signing in says why it cannot be kept.
        co_return StoredKey{};
    }
    co_return stored;
}

QCoro::Task<int> removeKey(QString service, milliseconds timeout)
{
    auto job = makeJob<QKeychain::DeletePasswordJob>(service);
    co_return co_await run(job, timeout);
}

QCoro::Task<std::optional<RoyaltiesError>> writeKey(QString service, milliseconds timeout, QString key)
{
    // The old item goes first, whatever its status. A keyring that does not answer even that would
    // only queue the write behind it (QtKeychain runs one job at a time), so the save fails at once
    // instead of waiting out a second time-out; one the user refused (KWallet's dialog dismissed)
    // is not asked a second time.
    const int removal = co_await removeKey(service, timeout);
    if (removal == KeychainStore::timedOutStatus || removal == QKeychain::AccessDenied
        || removal == QKeychain::AccessDeniedByUser) {
        co_return RoyaltiesError::server(KeychainStore::saveFailureMessage(removal));
    }
    auto job = makeJob<QKeychain::WritePasswordJob>(service);
    job->setTextData(key);
    const int status = co_await run(job, timeout);
    if (status != QKeychain::NoError) {
        co_return RoyaltiesError::server(KeychainStore::saveFailureMessage(status));
    }
    co_return std::nullopt;
}

} // namespace

QString KeychainStore::defaultService()
{
    return QStringLiteral("com.inkwarden.menubar");
}

QString KeychainStore::apiKeyName()
{
    return QStringLiteral("inkwarden-api-key");
}

KeychainStore::KeychainStore(QString service, std::chrono::milliseconds timeout,
                             std::chrono::milliseconds promptTimeout)
    : m_service(std::move(service))
    , m_timeout(timeout)
    , m_promptTimeout(promptTimeout)
{}

KeychainStore::~KeychainStore()
{
    // A read still under way keeps the keyring's watcher; it must not call back into this.
    if (m_lock) {
        QObject::disconnect(m_lock.get(), &KeyringLock::changed, nullptr, nullptr);
    }
}

std::shared_ptr<KeyringLock> KeychainStore::keyringLock()
{
    if (!m_lock) {
        const QDBusConnection bus = QDBusConnection::sessionBus();
        if (KWalletLock::isUsedIn(QProcessEnvironment::systemEnvironment())) {
            m_lock = std::make_shared<KWalletLock>(bus, m_service, apiKeyName(), m_timeout);
        } else {
            m_lock = std::make_shared<SecretServiceLock>(bus, m_service, apiKeyName(), m_timeout);
        }
        QObject::connect(m_lock.get(), &KeyringLock::changed, m_lock.get(), [this] {
            if (m_changeHandler) {
                m_changeHandler();
            }
        });
    }
    return m_lock;
}

QCoro::Task<StoredKey> KeychainStore::readAPIKey()
{
    if (QCoreApplication::instance() == nullptr) {
        qCWarning(lcKeychain) << "No application event loop to wait for the keyring on; reading no key";
        return []() -> QCoro::Task<StoredKey> { co_return StoredKey{}; }();
    }
    return readKeyAfterAsking(keyringLock(), m_service, m_timeout);
}

QString KeychainStore::loadAPIKey()
{
    if (QCoreApplication::instance() == nullptr) {
        return QString();
    }
    return QCoro::waitFor(readAPIKey()).key;
}

void KeychainStore::askToUnlock()
{
    if (QCoreApplication::instance() != nullptr) {
        keyringLock()->askToUnlock();
    }
}

void KeychainStore::setChangeHandler(std::function<void()> handler)
{
    m_changeHandler = std::move(handler);
    if (QCoreApplication::instance() != nullptr) {
        keyringLock();
    }
}

namespace {

QCoro::Task<std::optional<RoyaltiesError>> saveAndSayWhy(std::shared_ptr<KeyringLock> lock, QString service,
                                                         milliseconds timeout, milliseconds promptTimeout, QString key)
{
    // Named, not temporaries: g++ 12 mishandles temporaries inside a co_await expression.
    QCoro::Task<bool> asking = lock ? lock->isLockedForSaving() : []() -> QCoro::Task<bool> { co_return false; }();
    // A locked keyring shows its prompt (or KWallet its wizard) as the save begins: the user gets
    // time to answer it.
    const bool prompts = co_await std::move(asking);
    QCoro::Task<std::optional<RoyaltiesError>> writing =
        writeKey(service, prompts ? std::max(timeout, promptTimeout) : timeout, std::move(key));
    std::optional<RoyaltiesError> failure = co_await std::move(writing);
    if (!failure || !lock) {
        co_return failure;
    }
    // A keyring that stayed locked (its prompt dismissed or not answered) is the likeliest reason,
    // and one the user can do something about.
    asking = lock->isLockedForSaving();
    if (co_await std::move(asking)) {
        co_return RoyaltiesError::server(PlatformTexts::keyringLockedSaveFailure());
    }
    co_return failure;
}

} // namespace

QCoro::Task<std::optional<RoyaltiesError>> KeychainStore::saveAPIKey(QString key)
{
    return saveAndSayWhy(QCoreApplication::instance() != nullptr ? keyringLock() : nullptr, m_service, m_timeout,
                         m_promptTimeout, std::move(key));
}

QCoro::Task<> KeychainStore::deleteAPIKey()
{
    // The status is of no use to anyone: a missing item, a failure and a time-out all leave nothing to
    // do.
    co_await removeKey(m_service, m_timeout);
}

QString KeychainStore::saveFailureMessage(int status)
{
    return PlatformTexts::keyringSaveFailure(status);
}
