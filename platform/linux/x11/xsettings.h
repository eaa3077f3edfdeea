#pragma once

#include "platform/linux/qt/appearance_linux.h"

#include <optional>
#include <string>
#include <string_view>

namespace trovel {

class XcbConnection;

/// The value of a text setting in an XSETTINGS property, what desktops tell toolkits about their
/// looks (the XSETTINGS specification of freedesktop.org); nothing when it is not in there.
[[nodiscard]] std::optional<std::string> xsettingsText(std::string_view property,
                                                       std::string_view name);

/// The desktop's look as it is now, as far as it tells.
[[nodiscard]] DesktopLook readDesktopLook(XcbConnection& connection);

} // namespace trovel
