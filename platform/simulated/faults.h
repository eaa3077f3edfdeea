#pragma once

#include "platform/simulated/journal.h"
#include "platform/simulated/operation.h"
#include "platform/simulated/random.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace trovel {

/// Which operations of the desktop fail, and when.
class Faults {
public:
    Faults(Journal& journal, std::uint64_t seed) : journal_(journal), random_(seed) {}

    void failOnce(Operation operation) { modeOf(operation).once = true; }
    void failAlways(Operation operation) { modeOf(operation).perMille = 1000; }
    /// Fails in `perMille` of a thousand cases, drawn from the seed.
    void failSometimes(Operation operation, unsigned perMille) {
        modeOf(operation).perMille = perMille;
    }
    void heal(Operation operation) { modeOf(operation) = {}; }
    void healAll() { modes_ = {}; }

    /// Whether the operation that is being done now fails.
    [[nodiscard]] bool strikes(Operation operation);

private:
    struct Mode {
        bool once = false;
        unsigned perMille = 0;
    };

    Mode& modeOf(Operation operation) { return modes_[static_cast<std::size_t>(operation)]; }

    Journal& journal_;
    Random random_;
    std::array<Mode, kOperationNames.size()> modes_{};
};

} // namespace trovel
