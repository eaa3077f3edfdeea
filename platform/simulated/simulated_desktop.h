#pragma once

#include "platform/platform.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/journal.h"
#include "platform/simulated/simulated_accessibility.h"
#include "platform/simulated/simulated_alerts.h"
#include "platform/simulated/simulated_animator.h"
#include "platform/simulated/simulated_application.h"
#include "platform/simulated/simulated_bundle_info.h"
#include "platform/simulated/simulated_cursors.h"
#include "platform/simulated/simulated_event_monitors.h"
#include "platform/simulated/simulated_event_synthesizer.h"
#include "platform/simulated/simulated_file_system.h"
#include "platform/simulated/simulated_hotkey_service.h"
#include "platform/simulated/simulated_icons.h"
#include "platform/simulated/simulated_image_encoder.h"
#include "platform/simulated/simulated_input.h"
#include "platform/simulated/simulated_login_item.h"
#include "platform/simulated/simulated_main_queue.h"
#include "platform/simulated/simulated_open_panels.h"
#include "platform/simulated/simulated_pasteboard.h"
#include "platform/simulated/simulated_permissions.h"
#include "platform/simulated/simulated_preference_store.h"
#include "platform/simulated/simulated_process_host.h"
#include "platform/simulated/simulated_screen_capturer.h"
#include "platform/simulated/simulated_screens.h"
#include "platform/simulated/simulated_script_runner.h"
#include "platform/simulated/simulated_status_bar.h"
#include "platform/simulated/simulated_updater.h"
#include "platform/simulated/simulated_user.h"
#include "platform/simulated/simulated_wall_clock.h"
#include "platform/simulated/simulated_window_host.h"
#include "platform/simulated/simulated_worker.h"
#include "platform/simulated/simulated_workspace.h"

#include <cstdint>

namespace trovel {

/// A whole desktop in memory, with a clock of its own: what the program does to it can be looked
/// at, and what happens on it is up to whoever holds it. Two desktops that are treated alike behave
/// alike.
///
/// It starts with one display (number 1, 1440 x 900 points, scale 2), no other program, both
/// grants, empty preferences and an empty pasteboard. It must outlive the program that runs on it.
class SimulatedDesktop final {
public:
    explicit SimulatedDesktop(std::uint64_t seed = 0);
    SimulatedDesktop(SimulatedDesktop const&) = delete;
    SimulatedDesktop& operator=(SimulatedDesktop const&) = delete;
    /// What still waits is dropped first, while everything that it may refer to is there.
    ~SimulatedDesktop() { queue.clear(); }

    /// The desktop as the program sees it.
    [[nodiscard]] Platform platform();

    SimulatedMainQueue queue;
    Journal journal;
    Faults faults;
    SimulatedPermissions permissions;
    SimulatedPreferenceStore preferences;
    SimulatedPasteboard pasteboard;
    SimulatedWorker worker;
    SimulatedScreens screens;
    SimulatedCursors cursors;
    SimulatedEventMonitors monitors;
    SimulatedHotkeyService hotkeys;
    SimulatedWindowHost windows;
    SimulatedWorkspace workspace;
    SimulatedScriptRunner scripts;
    SimulatedAccessibility accessibility;
    SimulatedApplication application;
    SimulatedAlerts alerts;
    SimulatedStatusBar statusBar;
    SimulatedAnimator animator;
    SimulatedIcons icons;
    SimulatedOpenPanels openPanels;
    SimulatedWallClock wallClock;
    SimulatedFileSystem files;
    SimulatedImageEncoder encoder;
    SimulatedBundleInfo bundle;
    SimulatedProcessHost process;
    SimulatedLoginItem loginItem;
    SimulatedUpdater updater;
    SimulatedScreenCapturer capturer;
    SimulatedInput input;
    SimulatedEventSynthesizer events;
    SimulatedUser user;
};

} // namespace trovel
