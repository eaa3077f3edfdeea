#include "platform/linux/pictures/captured_image.h"

#include "platform/linux/pictures/pixel_region.h"

#include <QImage>

#include <malloc.h>

#include <new>
#include <utility>

namespace trovel {

CapturedImage::CapturedImage(PixelBuffer pixels, double scale)
    : width_(pixels.rows.width), height_(pixels.rows.height), scale_(scale),
      pixels_(std::move(pixels)) {}

std::shared_ptr<PixelImage const> CapturedImage::croppedTo(Rect const& rect) const {
    auto const part = intersection(outwardPixelRect(rect), {0, 0, width_, height_});
    auto const png = part.isEmpty() ? nullptr : pngData();
    if (!png) return nullptr;
    auto const whole = QImage::fromData(png->data(), static_cast<int>(png->size()), "PNG");
    auto const image = std::make_shared<QImage const>(
        whole
            .copy(static_cast<int>(part.x), static_cast<int>(part.y), static_cast<int>(part.width),
                  static_cast<int>(part.height))
            .convertToFormat(QImage::Format_RGB32));
    PixelRows const rows{image->constBits(), static_cast<std::size_t>(image->bytesPerLine()),
                         image->width(), image->height()};
    return std::make_shared<CapturedImage>(PixelBuffer{rows, image}, scale_);
}

std::shared_ptr<std::vector<std::uint8_t> const> CapturedImage::pngData() const {
    std::call_once(encoding_, [this] {
        try {
            png_ =
                std::make_shared<std::vector<std::uint8_t> const>(encodePng(pixels_.rows, scale_));
        } catch (std::bad_alloc const&) {
            png_ = nullptr;
        }
        pixels_ = {};
        // A program that rests has no use for the memory that a picture took.
        malloc_trim(0);
    });
    return png_;
}

} // namespace trovel
