#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"

#include <utility>

namespace trovel {

Label::Label(Rect frame, std::string text, Look look)
    : View(frame), text_(std::move(text)), look_(look) {}

void Label::setText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    didChange();
}

void Label::setTextColor(Color color) {
    if (std::exchange(look_.textColor, color) != color) didChange();
}

Button::Button(Rect frame, std::string title, Look look, Action action)
    : View(frame), title_(std::move(title)), look_(std::move(look)), action_(std::move(action)) {}

void Button::setTitle(std::string title) {
    if (title == title_) return;
    title_ = std::move(title);
    didChange();
}

void Button::setEnabled(bool isEnabled) {
    if (std::exchange(isEnabled_, isEnabled) != isEnabled) didChange();
}

void Button::press() {
    if (!isEnabled_) return;
    // The action may close the window and take this button with it.
    auto const self = shared_from_this();
    auto const action = action_;
    if (action) action();
}

ImageView::ImageView(Rect frame, std::optional<Icon> icon, std::optional<Color> contentTint,
                     ImageScaling scaling)
    : View(frame), icon_(std::move(icon)), contentTint_(contentTint), scaling_(scaling) {}

} // namespace trovel
