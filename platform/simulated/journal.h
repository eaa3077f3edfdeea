#pragma once

#include "platform/simulated/effects.h"
#include "platform/simulated/simulated_main_queue.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace trovel {

/// One line of the journal: an effect and the virtual time at which it happened.
struct JournalEntry {
    MainQueue::Duration time;
    Effect effect;

    friend bool operator==(JournalEntry const&, JournalEntry const&) = default;
};

[[nodiscard]] std::string toString(Effect const& effect);
std::ostream& operator<<(std::ostream& stream, JournalEntry const& entry);

namespace effect {

template <class Kind>
    requires std::is_convertible_v<Kind const&, Effect>
std::ostream& operator<<(std::ostream& stream, Kind const& effect) {
    return stream << toString(effect);
}

} // namespace effect

/// Everything that the program did to the desktop and the desktop to it, in order.
class Journal {
public:
    explicit Journal(SimulatedMainQueue const& clock) : clock_(clock) {}

    void record(Effect effect);

    [[nodiscard]] std::vector<JournalEntry> const& entries() const { return entries_; }

    /// The effects of one kind, in order.
    template <class Kind>
    [[nodiscard]] std::vector<Kind> all() const {
        std::vector<Kind> found;
        for (auto const& entry : entries_) {
            if (auto const* effect = std::get_if<Kind>(&entry.effect)) found.push_back(*effect);
        }
        return found;
    }

    /// When the effects of one kind happened, in order.
    template <class Kind>
    [[nodiscard]] std::vector<MainQueue::Duration> timesOf() const {
        std::vector<MainQueue::Duration> found;
        for (auto const& entry : entries_) {
            if (std::holds_alternative<Kind>(entry.effect)) found.push_back(entry.time);
        }
        return found;
    }

    template <class Kind>
    [[nodiscard]] std::size_t count() const {
        return timesOf<Kind>().size();
    }

    /// Forgets the entries so far; the digest keeps them.
    void clear() { entries_.clear(); }
    /// The entries so far, which it forgets.
    [[nodiscard]] std::vector<JournalEntry> take() { return std::exchange(entries_, {}); }

    /// A number that two runs share when the same things happened at the same times, cleared or
    /// not.
    [[nodiscard]] std::uint64_t digest() const { return digest_; }

private:
    SimulatedMainQueue const& clock_;
    std::vector<JournalEntry> entries_;
    std::uint64_t digest_ = 0xcbf29ce484222325U;
};

} // namespace trovel
