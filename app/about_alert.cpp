#include "app/about_alert.h"

#include "app/product.h"
#include "platform/bundle_info.h"
#include "settings/hotkey.h"

namespace trovel {

Alert aboutAlert(BundleInfo const& bundle, Preferences const& preferences, Product const& product) {
    auto const version = bundle.stringForKey("CFBundleShortVersionString").value_or("1.0");
    auto const build = bundle.stringForKey("CFBundleVersion").value_or("1");
    return {product.displayName,
            "Version " + version + " (" + build +
                ")\n\nScreenshot to AI in one keystroke. Capture a region and send it directly to "
                "Claude, ChatGPT, Gemini, or Perplexity.\n\nCurrent hotkey: " +
                storedHotkeyText(preferences),
            AlertStyle::informational,
            {"OK"},
            true};
}

} // namespace trovel
