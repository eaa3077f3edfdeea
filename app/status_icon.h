#pragma once

#include "platform/ui/drawn_image.h"

namespace trovel {

/// The picture in the status bar: four corner brackets around a dot, a template image.
[[nodiscard]] DrawnImage statusIcon();

} // namespace trovel
