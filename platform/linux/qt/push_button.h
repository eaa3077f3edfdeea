#pragma once

#include "platform/ui/button.h"
#include "platform/ui/layer_style.h"

#include <QPushButton>

namespace trovel {

/// A button of the tree as a widget: the desktop's own look, or its title on its layer.
class PushButton final : public QPushButton {
public:
    explicit PushButton(QWidget* parent);

    /// Shows the button as it is now; its layer as given.
    void mirror(Button const& button, LayerStyle const& layer);

private:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

    void paintOnLayer();

    Button::Look look_;
    LayerStyle layer_;
};

} // namespace trovel
