#include "tests/support/views.h"

#include "platform/fatal.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"

#include <array>
#include <cmath>
#include <sstream>
#include <string_view>
#include <variant>

namespace trovel {

namespace {

std::string textOf(double number) {
    std::ostringstream stream;
    stream << number;
    return std::move(stream).str();
}

std::string textOf(Font const& font) {
    constexpr std::array<std::string_view, 5> kWeights{"light", "regular", "medium", "semibold",
                                                       "bold"};
    auto const* const family = font.family == Font::Family::system ? "system " : "monospaced ";
    return family + textOf(font.size) + " " +
           std::string(kWeights[static_cast<std::size_t>(font.weight)]);
}

std::string textOf(Rect const& rect) {
    return "(" + textOf(rect.x) + ", " + textOf(rect.y) + ", " + textOf(rect.width) + ", " +
           textOf(rect.height) + ")";
}

std::string quoted(std::string text) {
    if (auto const at = text.find('\n'); at != std::string::npos) text.replace(at, 1, "\\n");
    return '"' + text + '"';
}

std::string textOf(Icon const& icon) {
    if (auto const* symbol = std::get_if<SymbolIcon>(&icon)) {
        auto text = "symbol " + symbol->name + " " + quoted(symbol->accessibilityDescription);
        if (auto const& look = symbol->configuration) {
            text += " " + textOf(Font::system(look->pointSize, look->weight));
        }
        return text;
    }
    if (std::holds_alternative<OwnApplicationIcon>(icon)) return "own icon";
    if (auto const* drawn = std::get_if<DrawnImage>(&icon)) {
        return "drawn " + textOf(drawn->size.width) + " x " + textOf(drawn->size.height);
    }
    return "application's icon";
}

void add(std::string& line, std::string const& part) {
    line += " | " + part;
}

std::string textOf(LayerStyle const& layer) {
    std::string text = "layer";
    if (layer.cornerRadius != 0) text += " radius " + textOf(layer.cornerRadius);
    if (layer.masksToBounds) text += " masks";
    if (layer.borderWidth != 0) {
        text += " border " + textOf(layer.borderWidth) + " " + textOf(layer.borderColor);
    }
    text += " background " + textOf(layer.backgroundColor);
    if (layer.opacity != 1) text += " opacity " + textOf(layer.opacity);
    if (auto const& shadow = layer.shadow) {
        text += " shadow " + textOf(shadow->color) + " (" + textOf(shadow->offset.width) + ", " +
                textOf(shadow->offset.height) + ") " + textOf(shadow->radius) + " " +
                textOf(shadow->opacity);
    }
    return text;
}

void addLook(std::string& line, Label const& label) {
    auto const& look = label.look();
    line += " " + quoted(label.text());
    add(line, textOf(look.font));
    add(line, textOf(look.textColor));
    if (look.alignment == TextAlignment::center) add(line, "centred");
    if (look.maximumLines != 1) add(line, textOf(look.maximumLines) + " lines");
    if (look.isBezeled) add(line, "bezeled");
}

void addLook(std::string& line, Button const& button) {
    auto const& look = button.look();
    line += " " + quoted(button.title());
    if (look.font) add(line, textOf(*look.font));
    if (!look.isBordered) add(line, "borderless");
    if (look.isLarge) add(line, "large");
    if (look.contentTint) add(line, "tint " + textOf(*look.contentTint));
    if (!look.keyEquivalent.empty()) {
        add(line, "key " + (look.keyEquivalent == "\r" ? "Return" : look.keyEquivalent));
    }
    if (!button.isEnabled()) add(line, "disabled");
}

void addLook(std::string& line, ImageView const& image) {
    add(line, image.icon() ? textOf(*image.icon()) : "empty");
    if (image.contentTint()) add(line, "tint " + textOf(*image.contentTint()));
    if (image.scaling() == ImageScaling::proportionallyUpOrDown) add(line, "fills");
}

std::string lineOf(View const& view) {
    constexpr std::array<std::string_view, 7> kKinds{
        "view", "label", "button", "image", "separator", "visual effect", "canvas"};
    auto line =
        std::string(kKinds[static_cast<std::size_t>(view.kind())]) + " " + textOf(view.frame());
    if (view.kind() == ViewKind::label) addLook(line, static_cast<Label const&>(view));
    if (view.kind() == ViewKind::button) addLook(line, static_cast<Button const&>(view));
    if (view.kind() == ViewKind::imageView) addLook(line, static_cast<ImageView const&>(view));
    if (auto const& layer = view.layer()) add(line, textOf(*layer));
    if (auto const& info = view.accessibility()) {
        add(line, "says button " + quoted(info->label) +
                      (info->value.empty() ? "" : " " + quoted(info->value)));
    }
    if (view.tracksPointer()) add(line, "tracks");
    if (view.clickAction()) add(line, "clicks");
    if (view.isHidden()) add(line, "hidden");
    return line;
}

void addLines(std::vector<std::string>& lines, View const& view, std::string const& indent) {
    lines.push_back(indent + lineOf(view));
    for (auto const& subview : view.subviews()) addLines(lines, *subview, indent + "  ");
}

Button* findButton(View& view, std::string_view title) {
    if (view.kind() == ViewKind::button) {
        auto& button = static_cast<Button&>(view);
        return button.title() == title ? &button : nullptr;
    }
    for (auto const& subview : view.subviews()) {
        if (auto* const found = findButton(*subview, title)) return found;
    }
    return nullptr;
}

} // namespace

std::string textOf(Color const& color) {
    constexpr std::array<std::string_view, 7> kNames{
        "",         "controlAccent",  "controlBackground",
        "label",    "secondaryLabel", "tertiaryLabel",
        "separator"};
    if (color == Color::clear()) return "clear";
    auto const part = [](double value) { return textOf(std::round(value * 255 * 1e6) / 1e6); };
    auto text = color.name == Color::Name::fixed
                    ? part(color.red) + "," + part(color.green) + "," + part(color.blue)
                    : std::string(kNames[static_cast<std::size_t>(color.name)]);
    return color.alpha == 1 ? text : text + " at " + textOf(color.alpha);
}

std::vector<std::string> linesOf(View const& view) {
    std::vector<std::string> lines;
    addLines(lines, view, "");
    return lines;
}

Point centreOf(View const& view) {
    auto const origin = view.convertFromWindow({0, 0});
    return {view.frame().width / 2 - origin.x, view.frame().height / 2 - origin.y};
}

Button& buttonIn(View& view, std::string_view title) {
    auto* const button = findButton(view, title);
    if (button == nullptr) fatal("a button that a test looks for is not there");
    return *button;
}

} // namespace trovel
