#include "tests/fuzz/swarm.h"

#include <numeric>

namespace trovel {

namespace {

/// How often each deed happens in a life of no particular character.
constexpr std::array<unsigned, kDeedNames.size()> kUsualWeights{
    300, 10, 250, 60, 120, 60, 30, 20, 60, 20, 60, 30, 15,
    60,  20, 12,  10, 8,   25, 10, 5,  5,  40, 40, 20, 15};

} // namespace

Swarm Swarm::draw(Random& random) {
    Swarm swarm;
    for (std::size_t deed = 0; deed < swarm.weights.size(); ++deed) {
        constexpr std::array<unsigned, 6> kFactors{0, 1, 1, 1, 2, 8};
        swarm.weights[deed] = kUsualWeights[deed] * kFactors[random.below(kFactors.size())];
    }
    // Without these no life would get anywhere.
    for (auto const deed : {Deed::pressHotkey, Deed::drag, Deed::startProgram}) {
        auto const index = static_cast<std::size_t>(deed);
        swarm.weights[index] += kUsualWeights[index];
    }
    swarm.selfActivation =
        random.chance(500) ? SelfActivation::comesToFront : SelfActivation::changesNothing;
    constexpr std::array<int, 4> kPauses{20, 200, 900, 4000};
    swarm.longestPause = std::chrono::milliseconds(kPauses[random.below(kPauses.size())]);
    swarm.longPausesPerMille = static_cast<unsigned>(random.below(20));
    swarm.readingTime = std::chrono::milliseconds(random.between(1, 20000));
    bool const isFaulty = random.chance(500);
    for (auto& perMille : swarm.faultsPerMille) {
        perMille = isFaulty && random.chance(300) ? static_cast<unsigned>(random.below(400)) : 0;
    }
    return swarm;
}

Deed Swarm::nextDeed(Random& random) const {
    auto ticket = random.below(std::accumulate(weights.begin(), weights.end(), 0U));
    std::size_t deed = 0;
    while (ticket >= weights[deed]) ticket -= weights[deed++];
    return static_cast<Deed>(deed);
}

} // namespace trovel
