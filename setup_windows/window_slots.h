#pragma once

#include <memory>

namespace trovel {

class ChangeAppWindowController;
class HotkeyRecorderWindowController;
class OnboardingWindowController;
class PermissionsWindowController;

/// The one live controller of each setup window; empty while that window is closed. One value for
/// the whole process.
struct WindowSlots {
    std::shared_ptr<OnboardingWindowController> sharedOnboardingWindow;
    std::shared_ptr<ChangeAppWindowController> sharedChangeAppWindow;
    std::shared_ptr<PermissionsWindowController> sharedPermissionsWindow;
    std::shared_ptr<HotkeyRecorderWindowController> sharedHotkeyRecorderWindow;
};

} // namespace trovel
