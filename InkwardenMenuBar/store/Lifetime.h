#pragma once

#include <memory>

// Tells a task that waits (for the network, the keyring, the desktop) whether the object that
// started it is still there when it resumes. Declared as its owner's last member, so that it says
// "gone" before any other member goes: a request aborted by a member's destructor resumes its
// task, which must then stop at once.
class Lifetime
{
public:
    Lifetime() = default;
    Lifetime(const Lifetime &) = delete;
    Lifetime &operator=(const Lifetime &) = delete;
    ~Lifetime() { *m_alive = false; }

    // For the task to keep across its waits: true while the owner lives.
    std::shared_ptr<const bool> token() const { return m_alive; }

private:
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};
