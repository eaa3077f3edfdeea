#pragma once

#include "platform/simulated/operation.h"
#include "platform/simulated/random.h"
#include "platform/simulated/simulated_application.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>

namespace trovel {

/// What the random user, the other programs and the desktop itself may do next.
enum class Deed : std::uint8_t {
    pressHotkey,
    holdHotkey,
    drag,
    press,
    move,
    release,
    click,
    rightClick,
    escape,
    otherKey,
    closeAlert,
    startProgram,
    quitProgram,
    switchProgram,
    changeWindows,
    changeGrant,
    changeDisplays,
    changeFault,
    changePreference,
    copyElsewhere,
    changeLatency,
    recordHotkey,
    chooseMenuRow,
    clickInWindow,
    closeWindow,
    pressKeyWithModifiers,
};

inline constexpr std::array<std::string_view, 26> kDeedNames{"press hotkey",
                                                             "hold hotkey",
                                                             "drag",
                                                             "press",
                                                             "move",
                                                             "release",
                                                             "click",
                                                             "right click",
                                                             "escape",
                                                             "other key",
                                                             "close alert",
                                                             "start program",
                                                             "quit program",
                                                             "switch program",
                                                             "change windows",
                                                             "change grant",
                                                             "change displays",
                                                             "change fault",
                                                             "change preference",
                                                             "copy elsewhere",
                                                             "change latency",
                                                             "record hotkey",
                                                             "choose menu row",
                                                             "click in window",
                                                             "close window",
                                                             "press key with modifiers"};

/// The character of one life of the program, drawn from its seed: some things happen all the time,
/// others never, so that rare combinations get their turn.
struct Swarm {
    std::array<unsigned, kDeedNames.size()> weights{};
    SelfActivation selfActivation = SelfActivation::comesToFront;
    /// The longest pause between two deeds, and how often it is a long one of up to 40 s.
    std::chrono::milliseconds longestPause{};
    unsigned longPausesPerMille = 0;
    /// How long an alert stays up at most when nobody presses its button.
    std::chrono::milliseconds readingTime{};
    /// How often each operation fails from the start.
    std::array<unsigned, kOperationNames.size()> faultsPerMille{};

    [[nodiscard]] static Swarm draw(Random& random);

    /// The next deed, by weight.
    [[nodiscard]] Deed nextDeed(Random& random) const;
};

} // namespace trovel
