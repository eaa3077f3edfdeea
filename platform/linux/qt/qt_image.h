#pragma once

#include "platform/image.h"

#include <QImage>

namespace trovel {

/// Pixels in an image of Qt's.
class QtImage final : public PixelImage {
public:
    explicit QtImage(QImage image) : image_(std::move(image)) {}

    [[nodiscard]] int widthPixels() const override { return image_.width(); }
    [[nodiscard]] int heightPixels() const override { return image_.height(); }
    [[nodiscard]] std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const override;

    [[nodiscard]] QImage const& image() const { return image_; }

private:
    QImage image_;
};

} // namespace trovel
