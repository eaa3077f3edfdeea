#include "platform/linux/qt/qt_values.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace trovel {

namespace {

QColor namedColor(Color::Name name) {
    auto const palette = QGuiApplication::palette();
    auto const text = palette.color(QPalette::WindowText);
    auto const faded = [&text](float alpha) {
        auto color = text;
        color.setAlphaF(alpha);
        return color;
    };
    // How much weaker than the label's own colour the lesser labels and lines are.
    constexpr float kSecondary = 0.6F;
    constexpr float kTertiary = 0.4F;
    constexpr float kSeparator = 0.15F;
    switch (name) {
    case Color::Name::fixed: return {};
    case Color::Name::controlAccent: return palette.color(QPalette::Highlight);
    case Color::Name::controlBackground: return palette.color(QPalette::Base);
    case Color::Name::label: return text;
    case Color::Name::secondaryLabel: return faded(kSecondary);
    case Color::Name::tertiaryLabel: return faded(kTertiary);
    case Color::Name::separator: return faded(kSeparator);
    }
    return {};
}

QFont::Weight qtWeight(Font::Weight weight) {
    switch (weight) {
    case Font::Weight::light: return QFont::Light;
    case Font::Weight::regular: return QFont::Normal;
    case Font::Weight::medium: return QFont::Medium;
    case Font::Weight::semibold: return QFont::DemiBold;
    case Font::Weight::bold: return QFont::Bold;
    }
    return QFont::Normal;
}

} // namespace

QColor qtColor(Color const& color) {
    auto const part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    if (color.name == Color::Name::fixed) {
        return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue),
                                part(color.alpha));
    }
    auto result = namedColor(color.name);
    result.setAlphaF(result.alphaF() * part(color.alpha));
    return result;
}

QFont qtFont(Font const& font) {
    bool const isFixed = font.family == Font::Family::monospacedSystem;
    auto result =
        QFontDatabase::systemFont(isFixed ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont);
    if (isFixed) result.setStyleHint(QFont::Monospace);
    // In pixels of Qt's, as the frames are: text fits its frame whatever resolution is set.
    result.setPixelSize(static_cast<int>(std::lround(font.size)));
    result.setWeight(qtWeight(font.weight));
    return result;
}

QRectF qtRect(Rect const& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

QString qtString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace trovel
