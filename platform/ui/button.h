#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/ui/view.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace trovel {

/// A push button. Its layer style, if it has one, is drawn behind the title. Main thread only.
class Button final : public View {
public:
    using Action = std::function<void()>;

    struct Look {
        std::optional<Font> font; // the system's button font when not given
        bool isBordered = true;
        bool isLarge = false;
        std::optional<Color> contentTint;
        /// The key that, without modifiers, presses the button while its window is key: "\r" for
        /// Return; empty for none.
        std::string keyEquivalent;

        friend bool operator==(Look const&, Look const&) = default;
    };

    Button(Rect frame, std::string title, Look look, Action action);

    [[nodiscard]] ViewKind kind() const override { return ViewKind::button; }

    void setTitle(std::string title);
    void setEnabled(bool isEnabled);

    /// Does what a click does, if the button is enabled. From the backend and the key equivalent.
    void press();

    [[nodiscard]] std::string const& title() const { return title_; }
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    [[nodiscard]] Look const& look() const { return look_; }

private:
    std::string title_;
    Look look_;
    Action action_;
    bool isEnabled_ = true;
};

} // namespace trovel
