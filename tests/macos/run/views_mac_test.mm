#include "platform/application.h"
#include "platform/ui/animator.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/separator.h"
#include "platform/ui/visual_effect_view.h"
#include "tests/macos/run/mac_test.h"

#import <QuartzCore/QuartzCore.h>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// Remembers what came to it.
class TrackingView final : public View {
public:
    using View::View;
    ~TrackingView() override = default;

    void mouseEntered() override { said.emplace_back("in"); }
    void mouseExited() override { said.emplace_back("out"); }
    void mouseDown(MouseEvent const&) override { said.emplace_back("down"); }
    void mouseDragged(MouseEvent const&) override { said.emplace_back("drag"); }
    void mouseUp(MouseEvent const&) override { said.emplace_back("up"); }
    void rightMouseDown(MouseEvent const&) override { said.emplace_back("right"); }

    std::vector<std::string> said;
};

class ViewsMac : public MacTest {
protected:
    void SetUp() override { platform.application.activate(); }

    std::shared_ptr<TrackingView> content = std::make_shared<TrackingView>(Rect{0, 0, 400, 300});
};

TEST_F(ViewsMac, ATreeIsMirroredWithItsFramesAndInItsOrder) {
    auto const back = std::make_shared<View>(Rect{10, 20, 100, 50});
    auto const front = std::make_shared<View>(Rect{30, 40, 60, 70});
    content->addSubview(back);
    content->addSubview(front);
    auto const window = open(content, kTitledWindow);
    NSArray<NSView*>* const mirrors = nativeView(*content).subviews;
    ASSERT_EQ(mirrors.count, 2U);
    EXPECT_TRUE([mirrors objectAtIndex:0] == nativeView(*back));
    EXPECT_TRUE([mirrors objectAtIndex:1] == nativeView(*front));
    EXPECT_EQ(fakes::textOf(nativeView(*back).frame), "10,20,100,50");
    front->setFrame({1, 2, 3, 4});
    EXPECT_EQ(fakes::textOf(nativeView(*front).frame), "1,2,3,4");
    front->setHidden(true);
    EXPECT_TRUE(nativeView(*front).hidden);
    back->removeFromSuperview();
    EXPECT_EQ(nativeView(*content).subviews.count, 1U);
}

TEST_F(ViewsMac, WhatIsForTheEyeAloneLetsClicksThroughToTheViewAroundIt) {
    auto const label = std::make_shared<Label>(Rect{10, 10, 100, 20}, "Text", Label::Look{});
    content->addSubview(label);
    auto const window = open(content, kTitledWindow);
    NSView* const hit = [nativeView(*content) hitTest:NSMakePoint(50, 20)];
    EXPECT_TRUE(hit == nativeView(*label));
    click(*label);
    EXPECT_THAT(content->said, ElementsAre("down", "up"));
}

TEST_F(ViewsMac, TheMouseReachesTheTreeWithAllThatItDoes) {
    auto const window = open(content, kTitledWindow);
    mac().movePointer(NSMakePoint(200, 200));
    mac().leftDown();
    mac().movePointer(NSMakePoint(900, 900));
    mac().leftUp();
    session.settle();
    mac().movePointer(NSMakePoint(200, 200));
    mac().rightDown();
    session.settle();
    EXPECT_THAT(content->said, ElementsAre("down", "drag", "up", "right"));
}

TEST_F(ViewsMac, ThePointerIsFollowedWhereAViewAsksForIt) {
    auto const tracking = std::make_shared<TrackingView>(Rect{0, 0, 100, 100});
    auto const button =
        std::make_shared<Button>(Rect{200, 0, 100, 40}, "Press", Button::Look{}, [] {});
    tracking->trackPointer();
    content->addSubview(tracking);
    content->addSubview(button);
    auto const window = open(content, kTitledWindow);
    mac().movePointer(onScreen(*tracking));
    mac().movePointer(onScreen(*button));
    session.settle();
    EXPECT_THAT(tracking->said, ElementsAre("in", "out"));
    EXPECT_TRUE(content->said.empty()); // it did not ask
    tracking->setFrame({0, 0, 90, 90});
    EXPECT_EQ(nativeView(*tracking)->trackingAreas_.size(), 1U);
}

TEST_F(ViewsMac, AButtonIsPressedByAClickAndByItsKeyAndOnlyWhileItIsEnabled) {
    int presses = 0;
    Button::Look look;
    look.keyEquivalent = "\r";
    auto const button =
        std::make_shared<Button>(Rect{10, 10, 100, 40}, "Go", look, [&] { ++presses; });
    content->addSubview(button);
    auto const window = open(content, kTitledWindow);
    click(*button);
    EXPECT_EQ(presses, 1);
    press(36, 0, "\r");
    EXPECT_EQ(presses, 2);
    button->setEnabled(false);
    NSButton* const native = [nativeView(*button).subviews objectAtIndex:0];
    EXPECT_FALSE(native.enabled);
    click(*button);
    press(36, 0, "\r");
    EXPECT_EQ(presses, 2);
}

TEST_F(ViewsMac, AButtonMayTakeItselfAwayInItsOwnClick) {
    auto button = std::make_shared<Button>(Rect{10, 10, 100, 40}, "Go", Button::Look{},
                                           [&] { content->removeAllSubviews(); });
    content->addSubview(button);
    auto const window = open(content, kTitledWindow);
    auto const place = onScreen(*button);
    button.reset();
    mac().movePointer(place);
    mac().leftDown();
    mac().leftUp();
    session.settle();
    EXPECT_TRUE(content->subviews().empty());
}

TEST_F(ViewsMac, AButtonMayDropItsWindowInItsOwnClick) {
    std::shared_ptr<Window> window;
    auto button = std::make_shared<Button>(Rect{10, 10, 100, 40}, "Close", Button::Look{}, [&] {
        window->close();
        window.reset();
    });
    content->addSubview(button);
    window = open(content, kTitledWindow);
    content.reset();
    auto const place = onScreen(*button);
    button.reset();
    mac().movePointer(place);
    mac().leftDown();
    mac().leftUp();
    session.settle();
    EXPECT_EQ(window, nullptr);
    EXPECT_TRUE(mac().windows.empty());
}

TEST_F(ViewsMac, ControlsLookAsTheTreeSays) {
    Label::Look labelLook{Font::system(13, Font::Weight::bold)};
    labelLook.alignment = TextAlignment::center;
    labelLook.maximumLines = 2;
    labelLook.isBezeled = true;
    auto const label = std::make_shared<Label>(Rect{0, 0, 100, 40}, "Two\nlines", labelLook);
    Button::Look buttonLook;
    buttonLook.isBordered = false;
    buttonLook.isLarge = true;
    buttonLook.font = Font::monospacedSystem(11, Font::Weight::medium);
    buttonLook.contentTint = Color::white(1, 1);
    auto const button = std::make_shared<Button>(Rect{0, 50, 100, 40}, "Go", buttonLook, [] {});
    auto const separator = std::make_shared<Separator>(Rect{0, 100, 100, 1});
    for (std::shared_ptr<View> const& view :
         std::initializer_list<std::shared_ptr<View>>{label, button, separator}) {
        content->addSubview(view);
    }
    auto const window = open(content, kTitledWindow);

    NSTextField* const field = [nativeView(*label).subviews objectAtIndex:0];
    EXPECT_EQ(fakes::toText(field.stringValue), "Two\nlines");
    EXPECT_EQ(field.font->look_, "system 13 0.4");
    EXPECT_EQ([field.textColor look], "label");
    EXPECT_EQ(field.alignment, NSTextAlignmentCenter);
    EXPECT_EQ(field.maximumNumberOfLines, 2);
    EXPECT_TRUE(field.bezeled && field.drawsBackground);
    EXPECT_EQ([field.backgroundColor look], "controlBackground");
    EXPECT_EQ(fakes::textOf(field.frame), "0,0,100,40");
    label->setText("Other");
    EXPECT_EQ(fakes::toText(field.stringValue), "Other");

    NSButton* const native = [nativeView(*button).subviews objectAtIndex:0];
    EXPECT_EQ(fakes::toText(native.title), "Go");
    EXPECT_FALSE(native.bordered);
    EXPECT_EQ(native.controlSize, NSControlSizeLarge);
    EXPECT_EQ(native.font->look_, "monospaced 11 0.23");
    EXPECT_EQ([native.contentTintColor look], "1,1,1");
    NSBox* const box = [nativeView(*separator).subviews objectAtIndex:0];
    EXPECT_EQ(box.boxType, NSBoxSeparator);
}

TEST_F(ViewsMac, WhatLiesInAnEffectIsInsideOfIt) {
    auto const effect = std::make_shared<VisualEffectView>(Rect{0, 0, 200, 200});
    auto const inside = std::make_shared<View>(Rect{0, 0, 100, 100});
    effect->addSubview(inside);
    auto const window = open(effect, kTitledWindow);
    NSVisualEffectView* const native = [nativeView(*effect).subviews objectAtIndex:0];
    EXPECT_TRUE([native isKindOfClass:[NSVisualEffectView class]]);
    EXPECT_EQ(native.material, NSVisualEffectMaterialHUDWindow);
    EXPECT_EQ(native.state, NSVisualEffectStateActive);
    EXPECT_TRUE([native.subviews objectAtIndex:0] == nativeView(*inside));
}

TEST_F(ViewsMac, IconsAreShownInTheirTint) {
    SymbolIcon symbol{"camera", "Take a picture", SymbolConfiguration{20, Font::Weight::light}};
    auto const image =
        std::make_shared<ImageView>(Rect{0, 0, 40, 40}, symbol, Color::system(Color::Name::label));
    auto const own =
        std::make_shared<ImageView>(Rect{0, 50, 40, 40}, OwnApplicationIcon{}, std::nullopt,
                                    ImageScaling::proportionallyUpOrDown);
    auto const none =
        std::make_shared<ImageView>(Rect{0, 90, 40, 40}, SymbolIcon{"no such symbol", "", {}});
    for (auto const& view : {image, own, none})
        content->addSubview(view);
    auto const window = open(content, kTitledWindow);
    NSImageView* const native = [nativeView(*image).subviews objectAtIndex:0];
    EXPECT_EQ(native.image->name_, "symbol camera configured");
    EXPECT_EQ(native.image->description_, "Take a picture");
    EXPECT_EQ([native.contentTintColor look], "label");
    EXPECT_EQ(native.imageScaling, NSImageScaleProportionallyDown);
    NSImageView* const second = [nativeView(*own).subviews objectAtIndex:0];
    EXPECT_EQ(second.image->name_, "NSApplicationIcon");
    EXPECT_EQ(second.imageScaling, NSImageScaleProportionallyUpOrDown);
    NSImageView* const third = [nativeView(*none).subviews objectAtIndex:0];
    EXPECT_TRUE(third.image == nil);
}

TEST_F(ViewsMac, ALayerLooksAsItsStyleSaysAndFollowsTheAppearance) {
    LayerStyle style;
    style.cornerRadius = 8;
    style.masksToBounds = true;
    style.borderWidth = 2;
    style.borderColor = Color::system(Color::Name::controlAccent);
    style.backgroundColor = Color::system(Color::Name::label, 0.04);
    style.opacity = 0.5;
    style.shadow = LayerShadow{Color::white(0, 1), {0, -3}, 6, 0.25};
    content->setLayer(style);
    auto const window = open(content, kTitledWindow);
    CALayer* const layer = nativeView(*content).layer;
    ASSERT_TRUE(layer != nil);
    EXPECT_EQ(layer.cornerRadius, 8);
    EXPECT_TRUE(layer.masksToBounds);
    EXPECT_EQ(layer.borderWidth, 2);
    EXPECT_EQ(fakes::lookOf(layer.borderColor), "controlAccent");
    EXPECT_EQ(fakes::lookOf(layer.backgroundColor), "label 0.04");
    EXPECT_EQ(nativeView(*content).alphaValue, 0.5);
    EXPECT_EQ(layer.shadowOffset.height, -3);
    EXPECT_EQ(layer.shadowRadius, 6);
    EXPECT_EQ(layer.shadowOpacity, 0.25F);
    EXPECT_EQ(fakes::lookOf(layer.shadowColor), "0,0,0");
    mac().setDark(true);
    EXPECT_EQ(fakes::lookOf(layer.backgroundColor), "label dark 0.04");
    mac().isDark = false; // as another accent colour, which changes no appearance
    mac().notify("NSSystemColorsDidChange");
    EXPECT_EQ(fakes::lookOf(layer.borderColor), "controlAccent");
    style.shadow.reset();
    content->setLayer(style);
    EXPECT_TRUE(nativeView(*content).shadow == nil);
}

TEST_F(ViewsMac, AChangeInAGroupIsAnimatedForAsLongAsItSays) {
    content->setLayer({});
    auto const window = open(content, kTitledWindow);
    mac().journal.clear();
    LayerStyle style;
    style.borderColor = Color::white(1, 1);
    platform.animator.runGroup(150ms, [&] { content->setLayer(style); });
    EXPECT_EQ(mac().count("animate borderColor 0.15"), 1);
    EXPECT_EQ(mac().count("flush layers"), 1);
}

TEST_F(ViewsMac, AScreenReaderHearsWhatAViewIsAndMayPressIt) {
    int presses = 0;
    auto const card = std::make_shared<View>(Rect{350, 250, 100, 100}); // its middle is outside
    card->setAccessibility({AccessibilityInfo::Role::button, "Claude", "selected"});
    card->setClickAction([&] { ++presses; });
    content->addSubview(card);
    auto const window = open(content, kTitledWindow);
    NSView* const native = nativeView(*card);
    EXPECT_TRUE(native.accessibilityElement);
    EXPECT_EQ(fakes::toText(native.accessibilityRole), "AXButton");
    EXPECT_EQ(fakes::toText(native.accessibilityLabel), "Claude");
    EXPECT_EQ(fakes::toText(native.accessibilityValue), "selected");
    EXPECT_TRUE([native accessibilityPerformPress]);
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE([nativeView(*content) accessibilityPerformPress]);
}

TEST_F(ViewsMac, AWindowMovesByItsBackgroundButNotByWhatTakesClicks) {
    auto const card = std::make_shared<View>(Rect{0, 0, 100, 100});
    card->setClickAction([] {});
    content->addSubview(card);
    WindowAttributes attributes;
    attributes.contentRect = {100, 100, 400, 300};
    attributes.styleMask = kTitledWindow;
    attributes.isMovableByBackground = true;
    auto const window = std::make_shared<Window>(platform.windows, attributes);
    window->setContentView(content);
    window->makeKeyAndOrderFront();
    NSWindow* const native = nativeWindow(*window);
    auto const dragFrom = [&](NSPoint place) {
        mac().movePointer(place);
        mac().leftDown();
        session.settle();
        mac().movePointer(NSMakePoint(place.x + 50, place.y));
        session.settle();
        mac().leftUp();
        session.settle();
        return native.frame.origin.x;
    };
    EXPECT_EQ(dragFrom(onScreen(*card)), 100);
    EXPECT_EQ(dragFrom(NSMakePoint(400, 300)), 150);
}

TEST_F(ViewsMac, ACommandKeyThatNobodyTakesComesToTheTree) {
    struct Keys final : View {
        using View::View;
        [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
        void keyDown(KeyEvent const& event) override { typed.push_back(event); }
        void flagsChanged(KeyEvent const& event) override { flags.push_back(event.modifierFlags); }
        std::vector<KeyEvent> typed;
        std::vector<EventFlags> flags;
    };
    auto const keys = std::make_shared<Keys>(Rect{0, 0, 200, 200});
    auto const window = open(keys, kTitledWindow);
    window->makeFirstResponder(keys.get());
    press(47, kFlagCommand, ".");
    ASSERT_EQ(keys->typed.size(), 1U);
    EXPECT_EQ(keys->typed.front().keyCode, 47U);
    EXPECT_EQ(keys->typed.front().modifierFlags, kFlagCommand);
    EXPECT_EQ(keys->typed.front().characters, ".");
    mac().changeFlags(kFlagShift);
    session.settle();
    EXPECT_THAT(keys->flags, ElementsAre(kFlagShift));
}

} // namespace
} // namespace trovel
