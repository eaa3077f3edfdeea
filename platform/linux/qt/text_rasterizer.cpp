#include "platform/linux/qt/text_rasterizer.h"

#include "platform/linux/qt/qt_values.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace trovel {

namespace {

constexpr int kDotsPerInch = 96;
constexpr int kPointsPerInch = 72;

/// An image whose resolution is fixed, so that a font's size in pixels can be a fraction whatever
/// resolution the desktop has set.
QImage blankImage(int width, int height) {
    constexpr double kInchesPerMeter = 1 / 0.0254;
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    auto const dotsPerMeter = static_cast<int>(std::lround(kDotsPerInch * kInchesPerMeter));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::transparent);
    return image;
}

Bitmap bitmapOf(QImage const& image) {
    Bitmap bitmap{image.width(), image.height(), {}};
    bitmap.pixels.reserve(static_cast<std::size_t>(image.width()) *
                          static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        auto const* const row = reinterpret_cast<std::uint32_t const*>(image.constScanLine(y));
        bitmap.pixels.insert(bitmap.pixels.end(), row, row + image.width());
    }
    return bitmap;
}

Bitmap blankBitmap(int width, int height) {
    auto const count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<std::uint32_t>(count, 0)};
}

/// One premultiplied pixel over another.
std::uint32_t over(std::uint32_t top, std::uint32_t bottom) {
    constexpr std::uint32_t kFull = 0xff;
    auto const through = kFull - (top >> 24U);
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        auto const below = (bottom >> shift & kFull) * through + kFull / 2;
        result |= ((top >> shift & kFull) + below / kFull) << shift;
    }
    return result;
}

/// Lays `cell`, which is as high as `line`, over it from the column `x` on.
void blendInto(Bitmap& line, Bitmap const& cell, int x) {
    int const columns = std::min(cell.width, line.width - x);
    for (int y = 0; y < line.height; ++y) {
        auto const* from = cell.pixels.data() + std::ptrdiff_t{y} * cell.width;
        auto* to = line.pixels.data() + std::ptrdiff_t{y} * line.width + x;
        for (int column = 0; column < columns; ++column, ++from, ++to) {
            if (*from != 0) *to = *to == 0 ? *from : over(*from, *to);
        }
    }
}

QFont fontAt(Font const& font, double scale) {
    auto result = qtFont(font);
    result.setPointSizeF(font.size * scale * kPointsPerInch / kDotsPerInch);
    return result;
}

} // namespace

/// A letter of a fixed-pitch font, in a cell of its own with the margin on both sides.
struct TextRasterizer::Glyph {
    char letter = 0;
    Color color;
    Bitmap cell;
};

struct TextRasterizer::Face {
    Font font;
    QFont qt;
    QFontMetricsF metrics;
    /// The distance from letter to letter; none where letters differ in width.
    std::optional<double> pitch;
    std::vector<Glyph> glyphs;

    /// Whether a line is simply its letters side by side, which needs no layout.
    [[nodiscard]] bool isPlain(std::string_view text) const {
        return pitch && std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
    }
    [[nodiscard]] double widthOf(std::string_view text) const {
        if (isPlain(text)) return *pitch * static_cast<double>(text.size());
        return metrics.horizontalAdvance(qtString(text));
    }
};

class TextRasterizer::Faces {
public:
    Face& find(Font const& font, double scale) {
        auto const known = std::ranges::find(faces_, font, &Face::font);
        if (known != faces_.end()) return *known;
        auto qt = fontAt(font, scale);
        QFontMetricsF const metrics(qt, &device_);
        std::optional<double> pitch;
        if (QFontInfo(qt).fixedPitch()) pitch = metrics.horizontalAdvance(u'0');
        return faces_.emplace_back(Face{font, std::move(qt), metrics, pitch, {}});
    }

private:
    QImage device_ = blankImage(1, 1);
    std::vector<Face> faces_;
};

TextRasterizer::TextRasterizer(double scale) : scale_(scale), faces_(std::make_unique<Faces>()) {}
TextRasterizer::~TextRasterizer() = default;

TextRasterizer::Face& TextRasterizer::face(Font const& font) {
    return faces_->find(font, scale_);
}

Size TextRasterizer::sizeOfText(std::string_view text, Font const& font) {
    auto const& used = face(font);
    return {used.widthOf(text) / scale_, used.metrics.height() / scale_};
}

Bitmap TextRasterizer::drawText(std::string_view text, TextAttributes const& attributes) {
    auto& used = face(attributes.font);
    if (!used.isPlain(text)) return layOut(used, text, attributes.color);
    Bitmap line = blankBitmap(static_cast<int>(std::ceil(used.widthOf(text))) + 2 * kTextMargin,
                              static_cast<int>(std::ceil(used.metrics.height())));
    double start = 0;
    for (char const letter : text) {
        blendInto(line, glyph(used, letter, attributes.color).cell,
                  static_cast<int>(std::lround(start)));
        start += *used.pitch;
    }
    return line;
}

Bitmap TextRasterizer::layOut(Face const& used, std::string_view text, Color const& color) {
    auto const width = static_cast<int>(std::ceil(used.widthOf(text))) + 2 * kTextMargin;
    auto image = blankImage(width, static_cast<int>(std::ceil(used.metrics.height())));
    QPainter painter(&image);
    painter.setFont(used.qt);
    painter.setPen(qtColor(color));
    painter.drawText(QPointF(kTextMargin, used.metrics.ascent()), qtString(text));
    painter.end();
    return bitmapOf(image);
}

TextRasterizer::Glyph const& TextRasterizer::glyph(Face& used, char letter, Color const& color) {
    for (auto const& known : used.glyphs) {
        if (known.letter == letter && known.color == color) return known;
    }
    return used.glyphs.emplace_back(
        Glyph{letter, color, layOut(used, std::string_view(&letter, 1), color)});
}

Bitmap TextRasterizer::drawRoundedRect(std::int64_t width, std::int64_t height, double radiusX,
                                       double radiusY, Color const& color) const {
    auto image = blankImage(static_cast<int>(width), static_cast<int>(height));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qtColor(color));
    painter.drawRoundedRect(QRectF(image.rect()), radiusX * scale_, radiusY * scale_);
    painter.end();
    return bitmapOf(image);
}

} // namespace trovel
