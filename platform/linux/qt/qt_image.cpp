#include "platform/linux/qt/qt_image.h"

#include <QRect>

namespace trovel {

std::shared_ptr<PixelImage const> QtImage::croppedTo(Rect const& rect) const {
    auto const outward = outwardPixelRect(rect);
    QRect const part(static_cast<int>(outward.x), static_cast<int>(outward.y),
                     static_cast<int>(outward.width), static_cast<int>(outward.height));
    auto const inside = part.intersected(image_.rect());
    if (inside.isEmpty()) return nullptr;
    return std::make_shared<QtImage const>(image_.copy(inside));
}

} // namespace trovel
