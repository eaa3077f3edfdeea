#include "app/status_icon.h"

#include "platform/ui/canvas.h"

#include <array>
#include <utility>
#include <vector>

namespace trovel {

namespace {

constexpr double kSize = 18;
constexpr double kInset = 2;
constexpr double kBracketLength = 5;
constexpr double kLineWidth = 1.5;
constexpr double kDotDiameter = 3;
constexpr Color kBlack = Color::white(0, 1);

bool drawStatusIcon(Canvas& canvas, Rect rect) {
    auto const frame = rect.insetBy(kInset);
    double const left = frame.minX();
    double const right = frame.maxX();
    double const bottom = frame.minY();
    double const top = frame.maxY();
    double const arm = kBracketLength;
    std::array<std::vector<Point>, 4> const brackets{{
        {{left, bottom + arm}, {left, bottom}, {left + arm, bottom}},
        {{right - arm, bottom}, {right, bottom}, {right, bottom + arm}},
        {{right, top - arm}, {right, top}, {right - arm, top}},
        {{left + arm, top}, {left, top}, {left, top - arm}},
    }};
    canvas.strokeLines(brackets, kLineWidth, kBlack);
    canvas.fillOval({rect.midX() - kDotDiameter / 2, rect.midY() - kDotDiameter / 2, kDotDiameter,
                     kDotDiameter},
                    kBlack);
    return true;
}

} // namespace

DrawnImage statusIcon(std::string name) {
    return {{kSize, kSize}, drawStatusIcon, true, std::move(name)};
}

} // namespace trovel
