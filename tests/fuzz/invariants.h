#pragma once

#include "app/app_delegate.h"
#include "platform/simulated/simulated_desktop.h"

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace trovel {

/// What must hold after every single block of the main queue, whatever the user and the desktop do.
class Invariants {
public:
    Invariants(SimulatedDesktop& desktop, AppDelegate const& delegate)
        : desktop_(desktop), delegate_(delegate) {}

    /// Looks at what the journal says of the last block, and at the state after it.
    void check();

    /// The block that runs now is the user's doing, not the program's.
    void userActs() { isUsersBlock_ = true; }

    /// What was broken first; nothing as long as everything holds.
    [[nodiscard]] std::optional<std::string> const& failure() const { return failure_; }
    void fail(std::string const& what);

    /// The last things that happened, one a line.
    [[nodiscard]] std::string history() const;
    /// Pictures that were written to the pasteboard so far.
    [[nodiscard]] int deliveries() const { return writes_; }

private:
    using Time = MainQueue::Duration;
    class Reader;

    void checkState();
    void checkHotkeys();
    void checkMenu();
    void checkInput(std::vector<JournalEntry> const& entries);
    void require(bool holds, char const* what) {
        if (!holds) fail(what);
    }

    SimulatedDesktop& desktop_;
    AppDelegate const& delegate_;
    std::optional<std::string> failure_;
    std::deque<JournalEntry> history_;
    bool isUsersBlock_ = false;

    Time sessionBegan_{};
    std::size_t screensAtBegin_ = 0;
    std::multiset<Time> captures_; // not yet delivered
    std::multiset<Time> pastesToSubmit_;
    int clears_ = 0;
    int writes_ = 0;
    int scripts_ = 0;
    int pastes_ = 0;
    int postedWithGrant_ = 0;
    int arrivedFromProgram_ = 0;
    bool wasHotkeyRefused_ = false;
    bool wasMenuOpened_ = false;
};

} // namespace trovel
