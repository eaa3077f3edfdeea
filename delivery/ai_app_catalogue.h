#pragma once

#include "delivery/ai_app.h"

#include <span>

namespace trovel {

/// The chat applications, in order of preference.
[[nodiscard]] std::span<KnownAIApp const> knownAIApps();

[[nodiscard]] std::span<KnownAIApp const> knownBrowsers();

/// The chat applications followed by the browsers.
[[nodiscard]] std::span<KnownAIApp const> allKnownApps();

} // namespace trovel
