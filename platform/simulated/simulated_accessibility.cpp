#include "platform/simulated/simulated_accessibility.h"

#include <algorithm>

namespace trovel {

/// Names a window; where it is gets looked up when it is asked.
class SimulatedAccessibility::WindowElement final : public AccessibilityWindow {
public:
    WindowElement(SimulatedAccessibility const& owner, std::int32_t processIdentifier, int windowId)
        : owner_(owner), processIdentifier_(processIdentifier), windowId_(windowId) {}
    ~WindowElement() override = default;

    [[nodiscard]] std::optional<Point> position() const override {
        auto const* window = read(Operation::readPosition);
        return window != nullptr ? std::optional(window->position) : std::nullopt;
    }
    [[nodiscard]] std::optional<Size> size() const override {
        auto const* window = read(Operation::readSize);
        return window != nullptr ? std::optional(window->size) : std::nullopt;
    }

private:
    [[nodiscard]] ProgramWindow const* read(Operation operation) const {
        auto const* program = owner_.workspace_.program(processIdentifier_);
        if (program == nullptr) return nullptr;
        auto const found = std::ranges::find(program->windows, windowId_, &ProgramWindow::id);
        if (found == program->windows.end()) return nullptr;
        return owner_.answers(*program, operation) ? &*found : nullptr;
    }

    SimulatedAccessibility const& owner_;
    std::int32_t processIdentifier_;
    int windowId_;
};

bool SimulatedAccessibility::answers(SimulatedProgram const& program, Operation operation) const {
    queue_.holdUp(program.answerTime);
    return permissions_.isGranted(Permission::accessibility) && !faults_.strikes(operation);
}

Accessibility::WindowPtr SimulatedAccessibility::element(std::int32_t processIdentifier,
                                                         int windowId) const {
    return std::make_shared<WindowElement>(*this, processIdentifier, windowId);
}

Accessibility::WindowPtr
SimulatedAccessibility::focusedWindow(std::int32_t processIdentifier) const {
    auto const* program = workspace_.program(processIdentifier);
    if (program == nullptr || program->hidesFocusedWindow || program->windows.empty()) {
        return nullptr;
    }
    if (!answers(*program, Operation::readFocusedWindow)) return nullptr;
    return element(processIdentifier, program->windows.front().id);
}

std::optional<std::vector<Accessibility::WindowPtr>>
SimulatedAccessibility::windows(std::int32_t processIdentifier) const {
    auto const* program = workspace_.program(processIdentifier);
    if (program == nullptr || program->hidesWindowList) return std::nullopt;
    if (!answers(*program, Operation::readWindows)) return std::nullopt;
    std::vector<WindowPtr> elements;
    for (auto const& window : program->windows) {
        elements.push_back(element(processIdentifier, window.id));
    }
    return elements;
}

} // namespace trovel
