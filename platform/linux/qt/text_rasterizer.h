#pragma once

#include "platform/font.h"
#include "platform/geometry.h"
#include "platform/linux/pictures/bitmap.h"
#include "platform/ui/canvas.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace trovel {

/// Text and rounded boxes as bitmaps, at one scale. Needs a QGuiApplication; main thread only.
class TextRasterizer {
public:
    explicit TextRasterizer(double scale);
    TextRasterizer(TextRasterizer const&) = delete;
    TextRasterizer& operator=(TextRasterizer const&) = delete;
    ~TextRasterizer();

    /// The size of one line of text, in points.
    [[nodiscard]] Size sizeOfText(std::string_view text, Font const& font);

    /// The line in a bitmap of its size in whole pixels, with `kTextMargin` pixels more to its left
    /// and right for letters that lean out of their box.
    [[nodiscard]] Bitmap drawText(std::string_view text, TextAttributes const& attributes);

    /// A box of whole pixels with its corners rounded; the radii are points.
    [[nodiscard]] Bitmap drawRoundedRect(std::int64_t width, std::int64_t height, double radiusX,
                                         double radiusY, Color const& color) const;

    [[nodiscard]] double scale() const { return scale_; }

    static constexpr int kTextMargin = 1;

private:
    struct Glyph;
    struct Face;
    class Faces;

    Face& face(Font const& font);
    static Glyph const& glyph(Face& used, char letter, Color const& color);
    static Bitmap layOut(Face const& used, std::string_view text, Color const& color);

    double scale_;
    std::unique_ptr<Faces> faces_;
};

} // namespace trovel
