#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/ui/view.h"

#include <cstdint>
#include <string>

namespace trovel {

enum class TextAlignment : std::uint8_t { natural, center };

/// A text that can be neither edited nor selected. Main thread only.
class Label final : public View {
public:
    struct Look {
        Font font;
        Color textColor = Color::system(Color::Name::label);
        TextAlignment alignment = TextAlignment::natural;
        int maximumLines = 1;
        /// A rounded bezel around the text, filled with the control background colour.
        bool isBezeled = false;

        friend bool operator==(Look const&, Look const&) = default;
    };

    Label(Rect frame, std::string text, Look look);

    [[nodiscard]] ViewKind kind() const override { return ViewKind::label; }

    void setText(std::string text);
    void setTextColor(Color color);

    [[nodiscard]] std::string const& text() const { return text_; }
    [[nodiscard]] Look const& look() const { return look_; }

private:
    std::string text_;
    Look look_;
};

} // namespace trovel
