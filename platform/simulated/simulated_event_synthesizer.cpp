#include "platform/simulated/simulated_event_synthesizer.h"

#include <utility>

namespace trovel {

class SimulatedEventSynthesizer::Mouse final : public SynthesizedEvent {
public:
    Mouse(SimulatedEventSynthesizer& owner, MouseAction action, Point position)
        : owner_(owner), action_(action), position_(position) {}
    ~Mouse() override = default;

    void setFlags(EventFlags /*flags*/) override {}
    void post() override {
        auto& world = owner_.world_;
        auto const point = world.screens.flipped(position_);
        owner_.send(effect::MousePosted{action_, position_},
                    [&input = world.input, point, action = action_] {
                        if (action == MouseAction::leftDown) {
                            input.leftDown(point);
                        } else {
                            input.leftUp(point);
                        }
                    });
    }

private:
    SimulatedEventSynthesizer& owner_;
    MouseAction action_;
    Point position_;
};

class SimulatedEventSynthesizer::Key final : public SynthesizedEvent {
public:
    Key(SimulatedEventSynthesizer& owner, KeyCode keyCode, KeyAction action)
        : owner_(owner), keyCode_(keyCode), action_(action) {}
    ~Key() override = default;

    void setFlags(EventFlags flags) override { flags_ = flags; }
    void post() override {
        owner_.send(
            effect::KeyPosted{keyCode_, action_, flags_},
            [&input = owner_.world_.input, key = keyCode_, action = action_, flags = flags_] {
                if (action == KeyAction::down) {
                    input.keyDown(key, flags);
                } else {
                    input.keyUp(key);
                }
            });
    }

private:
    SimulatedEventSynthesizer& owner_;
    KeyCode keyCode_;
    KeyAction action_;
    EventFlags flags_ = 0;
};

EventSynthesizer::EventPtr SimulatedEventSynthesizer::mouseEvent(MouseAction action,
                                                                 Point position) {
    if (world_.faults.strikes(Operation::makeMouseEvent)) return nullptr;
    return std::make_unique<Mouse>(*this, action, position);
}

EventSynthesizer::EventPtr SimulatedEventSynthesizer::keyboardEvent(KeyCode keyCode,
                                                                    KeyAction action) {
    if (world_.faults.strikes(Operation::makeKeyEvent)) return nullptr;
    return std::make_unique<Key>(*this, keyCode, action);
}

void SimulatedEventSynthesizer::send(Effect posted, std::function<void()> deliver) {
    world_.journal.record(std::move(posted));
    if (!world_.permissions.isGranted(Permission::accessibility)) {
        world_.journal.record(effect::EventDropped{});
        return;
    }
    world_.queue.post(std::move(deliver));
}

} // namespace trovel
