#pragma once

namespace trovel {

class Accessibility;
class Alerts;
class Animator;
class Application;
class BundleInfo;
class Cursors;
class EventMonitors;
class EventSynthesizer;
class FileSystem;
class HotkeyService;
class Icons;
class ImageEncoder;
class LoginItem;
class MainQueue;
class OpenPanels;
class Pasteboard;
class Permissions;
class PreferenceStore;
class ProcessHost;
class ScreenCapturer;
class Screens;
class ScriptRunner;
class StatusBar;
class Updater;
class WallClock;
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
    StatusBar& statusBar;
    Animator& animator;
    Icons& icons;
    OpenPanels& openPanels;
    FileSystem& files;
    ImageEncoder& imageEncoder;
    WallClock& wallClock;
    BundleInfo& bundle;
    ProcessHost& process;
    LoginItem& loginItem;
    Updater& updater;
};

} // namespace trovel
