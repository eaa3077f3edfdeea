#include "setup_windows/window_parts.h"

#include "platform/platform.h"
#include "platform/ui/visual_effect_view.h"
#include "platform/ui/window.h"

#include <utility>

namespace trovel {

std::shared_ptr<Label> addLabel(View& parent, Rect frame, std::string text, Font font, Color color,
                                TextAlignment alignment) {
    auto label =
        std::make_shared<Label>(frame, std::move(text), Label::Look{font, color, alignment});
    parent.addSubview(label);
    return label;
}

std::shared_ptr<Window> makePanelWindow(Platform const& platform, Size contentSize) {
    Rect const content{0, 0, contentSize.width, contentSize.height};
    auto window = std::make_shared<Window>(
        platform.windows,
        WindowAttributes{.contentRect = content,
                         .styleMask = kStyleTitled | kStyleClosable | kStyleFullSizeContentView,
                         .backgroundColor = Color::clear(),
                         .titlebarAppearsTransparent = true,
                         .isTitleHidden = true,
                         .isMovableByBackground = true});
    window->setContentView(std::make_shared<VisualEffectView>(content));
    return window;
}

} // namespace trovel
