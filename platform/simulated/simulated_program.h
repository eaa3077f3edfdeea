#pragma once

#include "platform/running_application.h"
#include "platform/simulated/effects.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace trovel {

/// A window of another program.
struct ProgramWindow {
    int id = 0;
    Point
        position; ///< its corner: points, origin at the top left of the primary screen, y downward
    Size size;

    [[nodiscard]] bool contains(Point point) const {
        return point.x >= position.x && point.y >= position.y &&
               point.x < position.x + size.width && point.y < position.y + size.height;
    }
};

/// What a program got from the user or from Trovel, and when.
struct ProgramInput {
    std::chrono::nanoseconds time;
    std::variant<effect::Clicked, effect::Pasted, effect::Typed> input;
};

/// Another program on the desktop: what it is, how it behaves, and what it remembers. A test
/// changes any of it at any time.
struct SimulatedProgram {
    std::int32_t processIdentifier = 0; ///< given out by the workspace
    std::optional<std::string> localizedName;
    std::optional<std::string> bundleIdentifier;
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
    std::vector<ProgramWindow> windows; ///< front to back

    /// How long it takes to come to the front when it is asked to, and whether it does at all.
    /// Without a delay it is there before the asking is over.
    std::chrono::nanoseconds activationDelay = std::chrono::milliseconds(50);
    bool refusesActivation = false;
    /// What it lets accessibility see, and how long who asks waits for each answer.
    bool hidesFocusedWindow = false;
    bool hidesWindowList = false;
    std::chrono::nanoseconds answerTime = std::chrono::nanoseconds::zero();

    std::vector<ProgramInput> inputs;

    /// The inputs of one kind, in order.
    template <class Kind>
    [[nodiscard]] std::vector<Kind> all() const {
        std::vector<Kind> found;
        for (auto const& each : inputs) {
            if (auto const* input = std::get_if<Kind>(&each.input)) found.push_back(*input);
        }
        return found;
    }
};

} // namespace trovel
