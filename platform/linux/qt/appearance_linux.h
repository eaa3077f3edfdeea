#pragma once

#include <string>

class QPalette;

namespace trovel {

/// What the desktop says of how its windows look.
struct DesktopLook {
    bool isDark = false;
    std::string iconTheme;
};

/// The colours of Qt's windows in that appearance.
[[nodiscard]] QPalette appearancePalette(bool isDark);

/// Has Qt's windows follow that look, and show the program's icon.
void followAppearance(DesktopLook const& look);

} // namespace trovel
