#pragma once

#include <cstdint>

namespace trovel {

/// Random numbers that are the same on every machine for the same seed (SplitMix64).
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    [[nodiscard]] std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15U;
        auto mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    /// From 0 to `bound` - 1; `bound` is at least 1. The bias is below one in 2^32 for the small
    /// bounds in use.
    [[nodiscard]] std::uint64_t below(std::uint64_t bound) { return next() % bound; }

    /// From `low` to `high`, both included.
    [[nodiscard]] std::int64_t between(std::int64_t low, std::int64_t high) {
        auto const span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(below(span));
    }

    /// True in `perMille` of a thousand cases.
    [[nodiscard]] bool chance(unsigned perMille) { return below(1000) < perMille; }

private:
    std::uint64_t state_;
};

} // namespace trovel
