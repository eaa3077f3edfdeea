#pragma once

#include "platform/platform.h"

#include <string_view>

namespace trovel {

/// Tells the user one sentence: activates the program and returns when the alert is closed.
void showStandardAlert(Platform const& platform, std::string_view message);

} // namespace trovel
