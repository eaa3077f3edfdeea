#include "platform/simulated/journal.h"

#include <iomanip>
#include <ostream>
#include <sstream>
#include <string_view>
#include <utility>

namespace trovel {

namespace {

std::ostream& operator<<(std::ostream& stream, Point point) {
    return stream << point.x << ',' << point.y;
}

std::ostream& operator<<(std::ostream& stream, Picture const& picture) {
    auto const& region = picture.region;
    return stream << "display " << picture.displayId << " at " << region.x << ',' << region.y
                  << " of " << region.width << 'x' << region.height << " px, " << picture.size.width
                  << 'x' << picture.size.height << " pt" << (picture.isClean ? "" : ", not clean");
}

std::ostream& operator<<(std::ostream& stream, PasteboardContents const& contents) {
    if (auto const* picture = std::get_if<Picture>(&contents)) return stream << *picture;
    if (auto const* text = std::get_if<std::string>(&contents)) return stream << std::quoted(*text);
    return stream << "nothing";
}

std::ostream& operator<<(std::ostream& stream, PreferenceValue const& value) {
    if (auto const* truth = std::get_if<bool>(&value)) return stream << (*truth ? "true" : "false");
    if (auto const* integer = std::get_if<std::int64_t>(&value)) return stream << *integer;
    if (auto const* real = std::get_if<double>(&value)) return stream << *real;
    return stream << std::quoted(std::get<std::string>(value));
}

std::string_view nameOf(Permission permission) {
    return permission == Permission::accessibility ? "accessibility" : "screenRecording";
}

/// Writes an effect as one line: its name, then what it carries.
class EffectWriter {
public:
    explicit EffectWriter(std::ostream& stream) : stream_(stream) {}

    void operator()(effect::Launched const&) { stream_ << "Launched"; }
    void operator()(effect::Terminated const&) { stream_ << "Terminated"; }
    void operator()(effect::ActivationAsked const& e) {
        stream_ << "ActivationAsked" << (e.ignoringOtherApps ? " ignoring other apps" : "");
    }
    void operator()(effect::FrontmostChanged const& e) {
        stream_ << "FrontmostChanged " << e.processIdentifier;
    }
    void operator()(effect::PermissionAsked const& e) {
        stream_ << "PermissionAsked " << nameOf(e.permission)
                << (e.isGranted ? " granted" : " missing");
    }
    void operator()(effect::PreferenceWritten const& e) {
        stream_ << "PreferenceWritten " << e.key << " = " << e.value;
    }
    void operator()(effect::PasteboardCleared const&) { stream_ << "PasteboardCleared"; }
    void operator()(effect::PictureWritten const& e) { stream_ << "PictureWritten " << e.picture; }
    void operator()(effect::ScriptExecuted const& e) {
        stream_ << "ScriptExecuted " << std::quoted(e.source);
    }
    void operator()(effect::HandlerInstalled const&) { stream_ << "HandlerInstalled"; }
    void operator()(effect::HandlerRemoved const&) { stream_ << "HandlerRemoved"; }
    void operator()(effect::HotKeyRegistered const& e) {
        stream_ << "HotKeyRegistered " << e.keyCode << ' ' << e.modifiers << " as "
                << e.id.signature << '/' << e.id.id;
    }
    void operator()(effect::HotKeyUnregistered const& e) {
        stream_ << "HotKeyUnregistered " << e.keyCode << ' ' << e.modifiers;
    }
    void operator()(effect::HotKeyHandled const& e) { stream_ << "HotKeyHandled " << e.status; }
    void operator()(effect::CaptureSessionBegan const&) { stream_ << "CaptureSessionBegan"; }
    void operator()(effect::CaptureSessionEnded const&) { stream_ << "CaptureSessionEnded"; }
    void operator()(effect::DisplaysListed const&) { stream_ << "DisplaysListed"; }
    void operator()(effect::DisplayCaptured const& e) {
        stream_ << "DisplayCaptured " << e.display.displayId << ", " << e.configuration.width << 'x'
                << e.configuration.height << (e.configuration.scalesToFit ? " to fit" : "")
                << (e.configuration.showsCursor ? " with pointer" : "");
    }
    void operator()(effect::MousePosted const& e) {
        stream_ << "MousePosted " << (e.action == MouseAction::leftDown ? "down" : "up") << " at "
                << e.position;
    }
    void operator()(effect::KeyPosted const& e) {
        stream_ << "KeyPosted " << e.keyCode << (e.action == KeyAction::down ? " down" : " up")
                << " flags 0x" << std::hex << e.flags << std::dec;
    }
    void operator()(effect::EventDropped const&) { stream_ << "EventDropped"; }
    void operator()(effect::Clicked const& e) {
        stream_ << "Clicked " << e.processIdentifier << " at " << e.position;
    }
    void operator()(effect::Pasted const& e) {
        stream_ << "Pasted " << e.processIdentifier << ": " << e.contents;
    }
    void operator()(effect::Typed const& e) {
        stream_ << "Typed " << e.processIdentifier << ": " << e.keyCode << " flags 0x" << std::hex
                << e.flags << std::dec;
    }
    void operator()(effect::OrderedFront const& e) { stream_ << "OrderedFront " << e.window; }
    void operator()(effect::MadeKey const& e) { stream_ << "MadeKey " << e.window; }
    void operator()(effect::OrderedOut const& e) { stream_ << "OrderedOut " << e.window; }
    void operator()(effect::MonitorAdded const&) { stream_ << "MonitorAdded"; }
    void operator()(effect::MonitorRemoved const&) { stream_ << "MonitorRemoved"; }
    void operator()(effect::CrosshairPushed const&) { stream_ << "CrosshairPushed"; }
    void operator()(effect::CursorPopped const&) { stream_ << "CursorPopped"; }
    void operator()(effect::AlertShown const& e) {
        stream_ << "AlertShown " << std::quoted(e.alert.messageText) << ' '
                << std::quoted(e.alert.informativeText)
                << (e.alert.style == AlertStyle::informational ? " informational" : " warning");
        for (auto const& button : e.alert.buttons) stream_ << " [" << button << ']';
    }
    void operator()(effect::AlertClosed const&) { stream_ << "AlertClosed"; }
    void operator()(effect::MenuOpened const&) { stream_ << "MenuOpened"; }
    void operator()(effect::MenuItemChanged const& e) {
        stream_ << "MenuItemChanged " << std::quoted(e.title) << (e.isOn ? " on" : " off");
    }
    void operator()(effect::AnimationGroupRun const& e) {
        stream_ << "AnimationGroupRun " << e.duration.count() << " ns";
    }
    void operator()(effect::WindowCentered const& e) { stream_ << "WindowCentered " << e.window; }
    void operator()(effect::PanelShown const& e) {
        stream_ << "PanelShown " << std::quoted(e.panel.title);
    }
    void operator()(effect::PermissionRequested const& e) {
        stream_ << "PermissionRequested " << nameOf(e.permission);
    }
    void operator()(effect::UrlOpened const& e) { stream_ << "UrlOpened " << e.url; }
    void operator()(effect::ChildStarted const& e) {
        stream_ << "ChildStarted " << e.executable;
        for (auto const& argument : e.arguments) stream_ << ' ' << std::quoted(argument);
    }
    void operator()(effect::HotKeysSuspended const& e) {
        stream_ << (e.isSuspended ? "HotKeysSuspended" : "HotKeysResumed");
    }
    void operator()(effect::TextWritten const& e) {
        stream_ << "TextWritten " << std::quoted(e.text);
    }
    void operator()(effect::FolderMade const& e) { stream_ << "FolderMade " << e.path; }
    void operator()(effect::FileWritten const& e) {
        stream_ << "FileWritten " << e.path << ' ' << e.size;
    }
    void operator()(effect::FileRemoved const& e) { stream_ << "FileRemoved " << e.path; }
    void operator()(effect::LoginItemAsked const&) { stream_ << "LoginItemAsked"; }
    void operator()(effect::LoginItemChanged const& e) {
        stream_ << (e.isRegistered ? "LoginItemRegistered" : "LoginItemUnregistered");
    }
    void operator()(effect::UpdaterMade const&) { stream_ << "UpdaterMade"; }
    void operator()(effect::UpdatesChecked const& effect) {
        stream_ << "UpdatesChecked from \"" << effect.sender << '"';
    }
    void operator()(effect::Noted const& e) { stream_ << "-- " << e.text; }
    void operator()(effect::FaultStruck const& e) {
        stream_ << "FaultStruck " << kOperationNames[static_cast<std::size_t>(e.operation)];
    }

private:
    std::ostream& stream_;
};

} // namespace

std::string toString(Effect const& effect) {
    std::ostringstream stream;
    std::visit(EffectWriter(stream), effect);
    return std::move(stream).str();
}

std::ostream& operator<<(std::ostream& stream, JournalEntry const& entry) {
    auto const time = std::chrono::duration<double, std::milli>(entry.time);
    return stream << time.count() << " ms: " << toString(entry.effect);
}

void Journal::record(Effect effect) {
    constexpr std::uint64_t kPrime = 0x100000001b3U; // FNV-1a
    auto const mix = [this](std::uint64_t value) { digest_ = (digest_ ^ value) * kPrime; };
    mix(static_cast<std::uint64_t>(clock_.now().count()));
    for (auto const character : toString(effect)) mix(static_cast<unsigned char>(character));
    entries_.push_back({clock_.now(), std::move(effect)});
}

} // namespace trovel
