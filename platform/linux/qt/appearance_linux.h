#pragma once

#include <optional>
#include <string>
#include <string_view>

class QPalette;

namespace trovel {

class XcbConnection;

/// The value of a text setting in an XSETTINGS property, what desktops tell toolkits about their
/// looks (the XSETTINGS specification of freedesktop.org); nothing when it is not in there.
[[nodiscard]] std::optional<std::string> xsettingsText(std::string_view property,
                                                       std::string_view name);

/// Whether the desktop's theme is a dark one, as far as it tells.
[[nodiscard]] bool isAppearanceDark(XcbConnection& connection);

/// The colours of Qt's windows in that appearance.
[[nodiscard]] QPalette appearancePalette(bool isDark);

/// Has Qt's windows follow the desktop's light or dark appearance and its icon theme as they are
/// now, and show the program's icon.
void followAppearance(XcbConnection& connection);

} // namespace trovel
