#pragma once

#include "platform/alerts.h"
#include "platform/event_synthesizer.h"
#include "platform/geometry.h"
#include "platform/hotkey_service.h"
#include "platform/key_codes.h"
#include "platform/open_panels.h"
#include "platform/screen_capturer.h"
#include "platform/simulated/operation.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace trovel {

enum class Permission : std::uint8_t { accessibility, screenRecording };

/// What a preference holds in the simulated defaults database, which takes any type for any key.
using PreferenceValue = std::variant<bool, std::int64_t, double, std::string>;

/// A picture as a value: which pixels of which display it holds, and the points it is to fill.
struct Picture {
    std::uint32_t displayId = 0;
    PixelRect region;
    Size size;
    /// Whether neither an overlay of Trovel's nor the pointer is to be seen in it.
    bool isClean = true;

    friend bool operator==(Picture const&, Picture const&) = default;
};

/// What lies on the pasteboard: nothing, a picture or a text.
using PasteboardContents = std::variant<std::monostate, Picture, std::string>;

/// Everything the journal can say, one struct a kind. Each is a plain value to compare with.
namespace effect {

// Start and end.
struct Launched {
    friend bool operator==(Launched const&, Launched const&) = default;
};
struct Terminated {
    friend bool operator==(Terminated const&, Terminated const&) = default;
};
/// The program asked to become the active one.
struct ActivationAsked {
    bool ignoringOtherApps = false;
    friend bool operator==(ActivationAsked const&, ActivationAsked const&) = default;
};
/// Another application came to the front; 0 when none is.
struct FrontmostChanged {
    std::int32_t processIdentifier = 0;
    friend bool operator==(FrontmostChanged const&, FrontmostChanged const&) = default;
};

// Services.
struct PermissionAsked {
    Permission permission = Permission::accessibility;
    bool isGranted = false;
    friend bool operator==(PermissionAsked const&, PermissionAsked const&) = default;
};
struct PreferenceWritten {
    std::string key;
    PreferenceValue value;
    friend bool operator==(PreferenceWritten const&, PreferenceWritten const&) = default;
};
struct PasteboardCleared {
    friend bool operator==(PasteboardCleared const&, PasteboardCleared const&) = default;
};
struct PictureWritten {
    Picture picture;
    friend bool operator==(PictureWritten const&, PictureWritten const&) = default;
};
struct ScriptExecuted {
    std::string source;
    friend bool operator==(ScriptExecuted const&, ScriptExecuted const&) = default;
};
struct HandlerInstalled {
    friend bool operator==(HandlerInstalled const&, HandlerInstalled const&) = default;
};
struct HandlerRemoved {
    friend bool operator==(HandlerRemoved const&, HandlerRemoved const&) = default;
};
struct HotKeyRegistered {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    EventHotKeyId id;
    friend bool operator==(HotKeyRegistered const&, HotKeyRegistered const&) = default;
};
struct HotKeyUnregistered {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    friend bool operator==(HotKeyUnregistered const&, HotKeyUnregistered const&) = default;
};
/// The handler of the program was called and gave this status.
struct HotKeyHandled {
    std::int32_t status = 0;
    friend bool operator==(HotKeyHandled const&, HotKeyHandled const&) = default;
};

// Capture.
struct CaptureSessionBegan {
    friend bool operator==(CaptureSessionBegan const&, CaptureSessionBegan const&) = default;
};
struct CaptureSessionEnded {
    friend bool operator==(CaptureSessionEnded const&, CaptureSessionEnded const&) = default;
};
struct DisplaysListed {
    friend bool operator==(DisplaysListed const&, DisplaysListed const&) = default;
};
struct DisplayCaptured {
    CaptureDisplay display;
    StreamConfiguration configuration;
    friend bool operator==(DisplayCaptured const&, DisplayCaptured const&) = default;
};

// Input that the program sent, and what became of it.
struct MousePosted {
    MouseAction action = MouseAction::leftDown;
    Point position;
    friend bool operator==(MousePosted const&, MousePosted const&) = default;
};
struct KeyPosted {
    KeyCode keyCode = 0;
    KeyAction action = KeyAction::down;
    EventFlags flags = 0;
    friend bool operator==(KeyPosted const&, KeyPosted const&) = default;
};
/// The system dropped the event that was posted just before, for want of the accessibility grant.
struct EventDropped {
    friend bool operator==(EventDropped const&, EventDropped const&) = default;
};

// What other applications made of the input that they got, the user's and the program's alike.
struct Clicked {
    std::int32_t processIdentifier = 0;
    Point position;
    friend bool operator==(Clicked const&, Clicked const&) = default;
};
struct Pasted {
    std::int32_t processIdentifier = 0;
    PasteboardContents contents;
    friend bool operator==(Pasted const&, Pasted const&) = default;
};
struct Typed {
    std::int32_t processIdentifier = 0;
    KeyCode keyCode = 0;
    EventFlags flags = 0;
    friend bool operator==(Typed const&, Typed const&) = default;
};

// Windows, monitors, cursor, alerts.
/// Windows are named by the order in which they were first shown, from 1.
struct OrderedFront {
    int window = 0;
    friend bool operator==(OrderedFront const&, OrderedFront const&) = default;
};
struct MadeKey {
    int window = 0;
    friend bool operator==(MadeKey const&, MadeKey const&) = default;
};
struct OrderedOut {
    int window = 0;
    friend bool operator==(OrderedOut const&, OrderedOut const&) = default;
};
struct MonitorAdded {
    friend bool operator==(MonitorAdded const&, MonitorAdded const&) = default;
};
struct MonitorRemoved {
    friend bool operator==(MonitorRemoved const&, MonitorRemoved const&) = default;
};
struct CrosshairPushed {
    friend bool operator==(CrosshairPushed const&, CrosshairPushed const&) = default;
};
struct CursorPopped {
    friend bool operator==(CursorPopped const&, CursorPopped const&) = default;
};
struct AlertShown {
    Alert alert;
    friend bool operator==(AlertShown const&, AlertShown const&) = default;
};
struct AlertClosed {
    friend bool operator==(AlertClosed const&, AlertClosed const&) = default;
};

// Windows of the setup, menus, and what they ask of the system.
struct MenuOpened {
    friend bool operator==(MenuOpened const&, MenuOpened const&) = default;
};
/// A row of an open menu was written to; the title and state that it has now.
struct MenuItemChanged {
    std::string title;
    bool isOn = false;
    friend bool operator==(MenuItemChanged const&, MenuItemChanged const&) = default;
};
struct AnimationGroupRun {
    std::chrono::nanoseconds duration{};
    friend bool operator==(AnimationGroupRun const&, AnimationGroupRun const&) = default;
};
struct WindowCentered {
    int window = 0;
    friend bool operator==(WindowCentered const&, WindowCentered const&) = default;
};
struct PanelShown {
    OpenPanel panel;
    friend bool operator==(PanelShown const&, PanelShown const&) = default;
};
struct PermissionRequested {
    Permission permission = Permission::accessibility;
    friend bool operator==(PermissionRequested const&, PermissionRequested const&) = default;
};
struct UrlOpened {
    std::string url;
    friend bool operator==(UrlOpened const&, UrlOpened const&) = default;
};
struct ChildStarted {
    std::string executable;
    std::vector<std::string> arguments;
    friend bool operator==(ChildStarted const&, ChildStarted const&) = default;
};
struct HotKeysSuspended {
    bool isSuspended = false;
    friend bool operator==(HotKeysSuspended const&, HotKeysSuspended const&) = default;
};

// Files, login item, updates, and texts on the pasteboard.
struct TextWritten {
    std::string text;
    friend bool operator==(TextWritten const&, TextWritten const&) = default;
};
struct FolderMade {
    std::string path;
    friend bool operator==(FolderMade const&, FolderMade const&) = default;
};
struct FileWritten {
    std::string path;
    std::size_t size = 0;
    friend bool operator==(FileWritten const&, FileWritten const&) = default;
};
struct FileRemoved {
    std::string path;
    friend bool operator==(FileRemoved const&, FileRemoved const&) = default;
};
struct LoginItemAsked {
    friend bool operator==(LoginItemAsked const&, LoginItemAsked const&) = default;
};
struct LoginItemChanged {
    bool isRegistered = false;
    friend bool operator==(LoginItemChanged const&, LoginItemChanged const&) = default;
};
struct UpdaterMade {
    friend bool operator==(UpdaterMade const&, UpdaterMade const&) = default;
};
struct UpdatesChecked {
    std::string sender; // the title of the menu row that was chosen; empty for none
    friend bool operator==(UpdatesChecked const&, UpdatesChecked const&) = default;
};

// The world's own doing.
/// A remark of whoever holds the desktop.
struct Noted {
    std::string text;
    friend bool operator==(Noted const&, Noted const&) = default;
};
struct FaultStruck {
    Operation operation = Operation::installEventHandler;
    friend bool operator==(FaultStruck const&, FaultStruck const&) = default;
};

} // namespace effect

using Effect = std::variant<
    effect::Launched, effect::Terminated, effect::ActivationAsked, effect::FrontmostChanged,
    effect::PermissionAsked, effect::PreferenceWritten, effect::PasteboardCleared,
    effect::PictureWritten, effect::ScriptExecuted, effect::HandlerInstalled,
    effect::HandlerRemoved, effect::HotKeyRegistered, effect::HotKeyUnregistered,
    effect::HotKeyHandled, effect::CaptureSessionBegan, effect::CaptureSessionEnded,
    effect::DisplaysListed, effect::DisplayCaptured, effect::MousePosted, effect::KeyPosted,
    effect::EventDropped, effect::Clicked, effect::Pasted, effect::Typed, effect::OrderedFront,
    effect::MadeKey, effect::OrderedOut, effect::MonitorAdded, effect::MonitorRemoved,
    effect::CrosshairPushed, effect::CursorPopped, effect::AlertShown, effect::AlertClosed,
    effect::MenuOpened, effect::MenuItemChanged, effect::AnimationGroupRun, effect::WindowCentered,
    effect::PanelShown, effect::PermissionRequested, effect::UrlOpened, effect::ChildStarted,
    effect::HotKeysSuspended, effect::TextWritten, effect::FolderMade, effect::FileWritten,
    effect::FileRemoved, effect::LoginItemAsked, effect::LoginItemChanged, effect::UpdaterMade,
    effect::UpdatesChecked, effect::Noted, effect::FaultStruck>;

} // namespace trovel
