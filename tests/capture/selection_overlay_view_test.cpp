#include "capture/selection_overlay_view.h"

#include "platform/ui/canvas_recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Rect kFrame{0, 0, 800, 600};
// What the measure below makes of a label of nine characters: 54 x 12 and its padding.
constexpr Size kBox{62, 16};

Size measure(std::string_view text, Font /*font*/) {
    return {6.0 * static_cast<double>(text.size()), 12};
}

/// Says that another operation is in force, and notes the one that each fill used.
class CopyingCanvas final : public Canvas {
public:
    ~CopyingCanvas() = default;

    CompositingOperation compositingOperation() const override {
        return CompositingOperation::copy;
    }
    void fillRect(Rect, Color, CompositingOperation operation) override {
        fills.push_back(operation);
    }
    void strokeRect(Rect, double, Color) override {}
    void fillRoundedRect(Rect, double, double, Color) override {}
    void strokeLines(std::span<std::vector<Point> const>, double, Color) override {}
    void fillOval(Rect, Color) override {}
    void drawText(std::string_view, Point, TextAttributes const&) override {}
    Size sizeOfText(std::string_view text, Font font) const override { return measure(text, font); }

    std::vector<CompositingOperation> fills;
};

class SelectionOverlayViewTest : public testing::Test {
protected:
    void SetUp() override {
        view->onFinished = [this](Rect rect) { finished.push_back(rect); };
        view->onCancel = [this] { ++cancels; };
    }

    static MouseEvent at(Point point) { return {MouseEvent::Kind::leftDown, point, 0}; }

    void dragTo(Point from, Point to) {
        view->mouseDown(at(from));
        view->mouseDragged(at(to));
    }
    void drag(Point from, Point to) {
        dragTo(from, to);
        view->mouseUp(at(to));
    }
    std::vector<CanvasOperation> drawn() const {
        CanvasRecording recording(measure);
        view->draw(recording);
        return recording.operations();
    }
    Rect label() const { return std::get<FillRoundedRectOperation>(drawn().at(3)).rect; }

    std::shared_ptr<SelectionOverlayView> view = std::make_shared<SelectionOverlayView>(kFrame);
    std::vector<Rect> finished;
    int cancels = 0;
};

CanvasOperation const kDimming =
    FillRectOperation{kFrame, Color::white(0, 0.35), CompositingOperation::sourceOver};

TEST_F(SelectionOverlayViewTest, WithoutADragItIsNothingButDim) {
    EXPECT_THAT(drawn(), ElementsAre(kDimming));
}

TEST_F(SelectionOverlayViewTest, DrawsAHoleABorderInsideItAndALabelBelow) {
    dragTo({100, 400}, {420, 160});
    Rect const selection{100, 160, 320, 240};
    Rect const box{260 - kBox.width / 2, 160 - 16 - 6, kBox.width, kBox.height};
    TextAttributes const attributes{{Font::Family::monospacedSystem, 10, Font::Weight::medium},
                                    Color::white(1, 1)};
    EXPECT_THAT(
        drawn(),
        ElementsAre(
            kDimming,
            CanvasOperation(
                FillRectOperation{selection, Color::clear(), CompositingOperation::copy}),
            CanvasOperation(StrokeRectOperation{
                {100.5, 160.5, 319, 239},
                1,
                Color::rgba(0.10980392156862745, 0.43137254901960786, 0.9490196078431372, 1)}),
            CanvasOperation(FillRoundedRectOperation{box, 4, 4, Color::white(0, 0.7)}),
            CanvasOperation(DrawTextOperation{"320 x 240", {box.x + 4, box.y + 2}, attributes})));
}

TEST_F(SelectionOverlayViewTest, DimsWithTheOperationInForceAndCutsWithCopy) {
    dragTo({100, 100}, {200, 200});
    CopyingCanvas canvas;
    view->draw(canvas);
    EXPECT_THAT(canvas.fills, ElementsAre(CompositingOperation::copy, CompositingOperation::copy));
}

TEST_F(SelectionOverlayViewTest, DrawsTheSelectionFromMoreThanTwoPointsEachWay) {
    dragTo({100, 100}, {102, 300});
    EXPECT_THAT(drawn(), SizeIs(1));
    dragTo({100, 100}, {300, 102});
    EXPECT_THAT(drawn(), SizeIs(1));
    dragTo({100, 100}, {102.01, 102.01});
    EXPECT_THAT(drawn(), SizeIs(5));
}

TEST_F(SelectionOverlayViewTest, BetweenTwoAndFourPointsItIsDrawnAndStillACancel) {
    drag({100, 100}, {103, 103});
    EXPECT_THAT(drawn(), SizeIs(5));
    EXPECT_EQ(cancels, 1);
    EXPECT_THAT(finished, IsEmpty());
}

TEST_F(SelectionOverlayViewTest, TheLabelDropsFractionsOfPoints) {
    dragTo({100, 100}, {199.999, 350.5});
    EXPECT_EQ(std::get<DrawTextOperation>(drawn().at(4)).text, "99 x 250");
}

TEST_F(SelectionOverlayViewTest, TheLabelOfWholePixelsIsNotAPointShort) {
    // What the subtraction of two positions can leave of 100 pixels at a scale of 1.25.
    double const from = 61 / 1.25;
    double const almost = std::nextafter(from + 80, 0.0);
    dragTo({from, 100}, {almost, 200});
    EXPECT_EQ(std::get<DrawTextOperation>(drawn().at(4)).text, "80 x 100");
}

TEST_F(SelectionOverlayViewTest, TheLabelGoesAboveWhereThereIsNoRoomBelow) {
    // The box's lower edge stays at 4 points: 4 + 16 + 6.
    dragTo({100, 26}, {300, 126});
    EXPECT_EQ(label().y, 4);
    dragTo({100, 25.99}, {300, 126});
    EXPECT_EQ(label().y, 126 + 6);
}

TEST_F(SelectionOverlayViewTest, TheLabelStaysTwoPointsInsideTheLeftAndRightEdges) {
    dragTo({0, 300}, {10, 400}); // "10 x 100", 48 + 8 wide
    EXPECT_EQ(label().x, 2);
    dragTo({790, 300}, {800, 400});
    EXPECT_EQ(label().x, 800 - 56 - 2);
}

TEST_F(SelectionOverlayViewTest, TheLeftMarginWinsInAViewThatIsTooNarrow) {
    view->setFrame({0, 0, 40, 600});
    dragTo({0, 300}, {10, 400});
    EXPECT_EQ(label().x, 2);
}

TEST_F(SelectionOverlayViewTest, ADragInAnyDirectionIsTheSameRectangle) {
    Rect const expected{100, 200, 300, 150};
    drag({100, 200}, {400, 350});
    drag({400, 350}, {100, 200});
    drag({100, 350}, {400, 200});
    drag({400, 200}, {100, 350});
    EXPECT_THAT(finished, ElementsAre(expected, expected, expected, expected));
    EXPECT_EQ(cancels, 0);
}

TEST_F(SelectionOverlayViewTest, ADragMayLeaveTheView) {
    drag({700, 500}, {-100, 900});
    EXPECT_THAT(finished, ElementsAre(Rect{-100, 500, 800, 400}));
}

TEST_F(SelectionOverlayViewTest, ADragOfFivePointsIsASelection) {
    drag({100, 100}, {105, 105});
    EXPECT_THAT(finished, ElementsAre(Rect{100, 100, 5, 5}));
    EXPECT_EQ(cancels, 0);
}

TEST_F(SelectionOverlayViewTest, ADragOfFourPointsIsACancel) {
    drag({100, 100}, {104, 200});
    EXPECT_EQ(cancels, 1);
    drag({100, 100}, {200, 104});
    EXPECT_EQ(cancels, 2);
    EXPECT_THAT(finished, IsEmpty());
}

TEST_F(SelectionOverlayViewTest, AClickIsACancel) {
    view->mouseDown(at({100, 100}));
    EXPECT_EQ(cancels, 0);
    view->mouseUp(at({100, 100}));
    EXPECT_EQ(cancels, 1);
}

TEST_F(SelectionOverlayViewTest, APressForgetsTheDragBefore) {
    drag({100, 100}, {300, 300});
    view->mouseDown(at({50, 50}));
    EXPECT_THAT(drawn(), SizeIs(1));
    view->mouseUp(at({50, 50}));
    EXPECT_EQ(cancels, 1);
    EXPECT_THAT(finished, SizeIs(1));
}

TEST_F(SelectionOverlayViewTest, AMotionWithoutAPressIsIgnored) {
    view->mouseDragged(at({300, 300}));
    EXPECT_THAT(drawn(), SizeIs(1));
    view->mouseUp(at({300, 300}));
    EXPECT_EQ(cancels, 1);
}

TEST_F(SelectionOverlayViewTest, TheSelectionIsWhereTheLastMotionWas) {
    dragTo({100, 100}, {300, 300});
    view->mouseUp(at({500, 500}));
    EXPECT_THAT(finished, ElementsAre(Rect{100, 100, 200, 200}));
}

TEST_F(SelectionOverlayViewTest, ARightClickIsACancelEvenDuringADrag) {
    dragTo({100, 100}, {300, 300});
    view->rightMouseDown(at({300, 300}));
    EXPECT_EQ(cancels, 1);
    EXPECT_THAT(finished, IsEmpty());
}

TEST_F(SelectionOverlayViewTest, OnlyEscapeOfAllKeysIsACancel) {
    for (KeyCode key = 0; key < 128; ++key) {
        if (key != 53) view->keyDown({KeyEvent::Kind::keyDown, key, 0});
    }
    EXPECT_EQ(cancels, 0);
    view->keyDown({KeyEvent::Kind::keyDown, 53, kFlagCapsLock});
    EXPECT_EQ(cancels, 1);
}

TEST_F(SelectionOverlayViewTest, TakesTheKeyboardAndTheFirstPressOnAnyScreen) {
    EXPECT_TRUE(view->acceptsFirstResponder());
    EXPECT_TRUE(view->acceptsFirstMouse());
}

TEST_F(SelectionOverlayViewTest, WithoutCallbacksNothingHappens) {
    view->onFinished = nullptr;
    view->onCancel = nullptr;
    drag({100, 100}, {300, 300});
    drag({100, 100}, {100, 100});
    view->rightMouseDown(at({0, 0}));
    view->keyDown({KeyEvent::Kind::keyDown, 53, 0});
}

} // namespace
} // namespace trovel
