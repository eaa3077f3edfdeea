#pragma once

namespace trovel {

class Accessibility;
class Alerts;
class Application;
class Cursors;
class EventMonitors;
class EventSynthesizer;
class HotkeyService;
class MainQueue;
class Pasteboard;
class Permissions;
class PreferenceStore;
class ScreenCapturer;
class Screens;
class ScriptRunner;
class WindowHost;
class Worker;
class Workspace;

/// Everything that the operating system does for Trovel. References only: the backend owns what
/// they name and keeps it until the process ends.
struct Platform {
    Application& application;
    MainQueue& mainQueue;
    Worker& worker;
    PreferenceStore& preferences;
    Pasteboard& pasteboard;
    Workspace& workspace;
    ScriptRunner& scripts;
    Accessibility& accessibility;
    EventSynthesizer& events;
    Permissions& permissions;
    Screens& screens;
    ScreenCapturer& capturer;
    HotkeyService& hotkeys;
    WindowHost& windows;
    EventMonitors& monitors;
    Cursors& cursors;
    Alerts& alerts;
};

} // namespace trovel
