#pragma once

#include "platform/running_application.h"

#include <cstdint>
#include <string>

namespace trovel {

/// How a message is submitted: with a plain Return, or with Command-Return.
enum class SendBehavior : std::uint8_t { enter, cmdEnter };

/// A row of the catalogue, or the custom application that the user picked.
struct KnownAIApp {
    /// The display name, which is also the value of the preference that chooses this row.
    std::string name;
    /// What the bundle identifier of a running application begins with, byte for byte.
    std::string bundlePrefix;
    SendBehavior sendBehavior = SendBehavior::enter;
    /// The name of the system symbol on the row's card.
    std::string icon;

    friend bool operator==(KnownAIApp const&, KnownAIApp const&) = default;
};

/// A running application that receives a capture.
struct AIApp {
    std::string name;
    /// The whole identifier of the application found, not the row's prefix.
    std::string bundleIdentifier;
    RunningApplication app;
    SendBehavior sendBehavior = SendBehavior::enter;

    friend bool operator==(AIApp const&, AIApp const&) = default;
};

} // namespace trovel
