#pragma once

#include "platform/alerts.h"

namespace trovel {

class BundleInfo;
class Preferences;
struct Product;

/// What "About" says: the version and build of the bundle, and the hotkey in force.
[[nodiscard]] Alert aboutAlert(BundleInfo const& bundle, Preferences const& preferences,
                               Product const& product);

} // namespace trovel
