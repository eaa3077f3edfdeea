#pragma once

#include "platform/ui/drawn_image.h"

class QIcon;

namespace trovel {

/// The image as the picture of a tray icon, in the sizes in pixels that panels ask for. A template
/// is light with a dark edge: nobody tells what colour the panel behind it has.
[[nodiscard]] QIcon trayIcon(DrawnImage const& image);

} // namespace trovel
