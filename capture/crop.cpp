#include "capture/crop.h"

#include <algorithm>

namespace trovel {

Rect cropRect(Size imageSize, double scale, Rect const& frame, Rect const& selection) {
    double const top = frame.height - ((selection.y - frame.y) + selection.height);
    // The far limit comes before the near one, so a position is never negative whatever the image.
    double const x = std::max(std::min(scale * (selection.x - frame.x), imageSize.width), 0.0);
    double const y = std::max(std::min(scale * top, imageSize.height), 0.0);
    return {x, y, std::min(imageSize.width - x, scale * selection.width),
            std::min(imageSize.height - y, scale * selection.height)};
}

} // namespace trovel
