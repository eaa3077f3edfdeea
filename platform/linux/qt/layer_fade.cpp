#include "platform/linux/qt/layer_fade.h"

#include "platform/linux/qt/qt_values.h"

#include <cmath>

namespace trovel {

namespace {

/// Starts and ends gently.
double eased(double part) {
    return part * part * (3 - 2 * part);
}

/// Mixed as light, so that a colour which comes out of nothing keeps its hue.
Color mixed(Color const& from, Color const& to, double part) {
    auto const first = qtColor(from);
    auto const last = qtColor(to);
    double const alpha = std::lerp(double{first.alphaF()}, double{last.alphaF()}, part);
    if (alpha <= 0) return Color::clear();
    auto const component = [&](float one, float other) {
        return std::lerp(double{one * first.alphaF()}, double{other * last.alphaF()}, part) / alpha;
    };
    return Color::rgba(component(first.redF(), last.redF()),
                       component(first.greenF(), last.greenF()),
                       component(first.blueF(), last.blueF()), alpha);
}

} // namespace

LayerStyle mixed(LayerStyle const& from, LayerStyle const& to, double part) {
    LayerStyle style = to;
    style.cornerRadius = std::lerp(from.cornerRadius, to.cornerRadius, part);
    style.borderWidth = std::lerp(from.borderWidth, to.borderWidth, part);
    style.borderColor = mixed(from.borderColor, to.borderColor, part);
    style.backgroundColor = mixed(from.backgroundColor, to.backgroundColor, part);
    style.opacity = std::lerp(from.opacity, to.opacity, part);
    return style;
}

void LayerFade::setTarget(LayerStyle const& target, Clock::duration duration,
                          Clock::time_point now) {
    if (target == target_) return;
    from_ = shownAt(now);
    target_ = target;
    begin_ = now;
    end_ = now + duration;
}

LayerStyle LayerFade::shownAt(Clock::time_point now) const {
    if (!isRunningAt(now)) return target_;
    std::chrono::duration<double> const passed = now - begin_;
    return mixed(from_, target_, eased(passed / std::chrono::duration<double>(end_ - begin_)));
}

} // namespace trovel
