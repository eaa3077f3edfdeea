#include "tests/macos/run/native_tree.h"

#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/runtime/runtime.h"

namespace trovel {

namespace {

/// What an object of the backend's mirrors, which it refers to weakly.
template <class T> T const* mirroredBy(id _Nonnull object, char const* variable) {
    auto* const place = objc::variableOf((__bridge objc::Object*)object, variable);
    return static_cast<std::weak_ptr<T> const*>(place)->lock().get();
}

bool isOfTrovel(id _Nonnull object) {
    auto const* const name = ((__bridge objc::Object*)object)->isa->name;
    return std::string_view(name).starts_with("Trovel");
}

NSView* _Nullable find(NSView* _Nullable native, View const& view) {
    if (native == nil) return nil;
    if (isOfTrovel(native) && mirroredBy<View>(native, "view_") == &view) return native;
    for (NSView* subview in native.subviews)
        if (NSView* const found = find(subview, view)) return found;
    return nil;
}

} // namespace

NSWindow* nativeWindow(Window const& window) {
    for (NSWindow* const each : fakes::mac().windows) {
        if (isOfTrovel(each) && mirroredBy<Window>(each, "window_") == &window) return each;
    }
    objc::fatal("a window has no mirror");
}

NSView* nativeView(View const& view) {
    NSView* const found = find(nativeWindow(*view.window()).contentView, view);
    if (found == nil) objc::fatal("a view has no mirror");
    return found;
}

NSPoint onScreen(View const& view) {
    auto const origin = view.convertFromWindow({0, 0});
    NSRect frame{};
    @autoreleasepool {
        frame = nativeWindow(*view.window()).frame;
    }
    return NSMakePoint(frame.origin.x + view.frame().width / 2 - origin.x,
                       frame.origin.y + view.frame().height / 2 - origin.y);
}

} // namespace trovel
