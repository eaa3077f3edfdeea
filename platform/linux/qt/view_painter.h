#pragma once

#include "platform/ui/button.h"
#include "platform/ui/layer_style.h"
#include "platform/ui/view.h"

#include <QPainter>
#include <QRectF>

#include <functional>

class QStyle;

namespace trovel {

class ImageView;
class Label;

/// Paints views, by their kinds, on a painter of Qt's whose y grows downward. Main thread only.
class ViewPainter {
public:
    /// The layer style that a view shows at this moment.
    using ShownLayer = std::function<LayerStyle(View const&)>;

    /// Only what `exposed` (coordinates of the painter) lies under needs to be painted.
    ViewPainter(QPainter& painter, QStyle const& style, QRectF const& exposed,
                ShownLayer shownLayer);

    /// Paints the view and all that is in it, in a superview that is `superHeight` points high and
    /// has its upper left corner at the painter's origin. Buttons are left out: they are widgets.
    void paint(View const& view, double superHeight);

private:
    void paintContents(View const& view, QRectF const& box);
    void paintLabel(Label const& label, QRectF const& box);
    void paintIcon(ImageView const& view, QRectF const& box);
    void paintMaterial(QRectF const& box);
    void paintCanvas(CanvasView const& view);
    [[nodiscard]] bool isExposed(QRectF const& box) const;

    QPainter& painter_;
    QStyle const& style_;
    QRectF exposed_;
    ShownLayer shownLayer_;
};

/// How far a view's look reaches beyond its frame on each side.
[[nodiscard]] double reachOf(LayerStyle const& style);

/// What lies behind a layer's contents: shadow and background.
void paintBehind(QPainter& painter, QRectF const& box, LayerStyle const& style);

} // namespace trovel
