#include "platform/linux/ui/text_rasterizer.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
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

QFont qtFont(Font const& font, double scale) {
    auto const role = font.family == Font::Family::monospacedSystem ? QFontDatabase::FixedFont
                                                                    : QFontDatabase::GeneralFont;
    QFont result = QFontDatabase::systemFont(role);
    if (font.family == Font::Family::monospacedSystem) result.setStyleHint(QFont::Monospace);
    result.setPointSizeF(font.size * scale * kPointsPerInch / kDotsPerInch);
    result.setWeight(qtWeight(font.weight));
    return result;
}

QColor qtColor(Color const& color) {
    auto const part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue),
                            part(color.alpha));
}

QString qtString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

struct TextRasterizer::Face {
    Font font;
    QFont qt;
    QFontMetricsF metrics;
};

class TextRasterizer::Faces {
public:
    Face const& find(Font const& font, double scale) {
        auto const known = std::ranges::find(faces_, font, &Face::font);
        if (known != faces_.end()) return *known;
        auto qt = qtFont(font, scale);
        QFontMetricsF const metrics(qt, &device_);
        return faces_.emplace_back(Face{font, std::move(qt), metrics});
    }

private:
    QImage device_ = blankImage(1, 1);
    std::vector<Face> faces_;
};

TextRasterizer::TextRasterizer(double scale) : scale_(scale), faces_(std::make_unique<Faces>()) {}
TextRasterizer::~TextRasterizer() = default;

TextRasterizer::Face const& TextRasterizer::face(Font const& font) {
    return faces_->find(font, scale_);
}

Size TextRasterizer::sizeOfText(std::string_view text, Font const& font) {
    auto const& metrics = face(font).metrics;
    return {metrics.horizontalAdvance(qtString(text)) / scale_, metrics.height() / scale_};
}

Bitmap TextRasterizer::drawText(std::string_view text, TextAttributes const& attributes) {
    auto const& used = face(attributes.font);
    auto const line = qtString(text);
    auto const width =
        static_cast<int>(std::ceil(used.metrics.horizontalAdvance(line))) + 2 * kTextMargin;
    auto image = blankImage(width, static_cast<int>(std::ceil(used.metrics.height())));
    QPainter painter(&image);
    painter.setFont(used.qt);
    painter.setPen(qtColor(attributes.color));
    painter.drawText(QPointF(kTextMargin, used.metrics.ascent()), line);
    painter.end();
    return bitmapOf(image);
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
