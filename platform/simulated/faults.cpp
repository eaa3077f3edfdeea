#include "platform/simulated/faults.h"

#include <utility>

namespace trovel {

bool Faults::strikes(Operation operation) {
    auto& mode = modeOf(operation);
    bool const strikesOnce = std::exchange(mode.once, false);
    bool const strikesBySeed = mode.perMille > 0 && random_.chance(mode.perMille);
    if (!strikesOnce && !strikesBySeed) return false;
    journal_.record(effect::FaultStruck{operation});
    return true;
}

} // namespace trovel
