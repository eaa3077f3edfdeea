#pragma once

#include "platform/ui/drawn_image.h"

#include <string>

namespace trovel {

/// The picture in the status bar: four corner brackets around a dot, a template image. A screen
/// reader calls it by that name.
[[nodiscard]] DrawnImage statusIcon(std::string name);

} // namespace trovel
