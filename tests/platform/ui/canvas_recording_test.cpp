#include "platform/ui/canvas_recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace trovel {
namespace {

using testing::ElementsAre;

Size sizeByLength(std::string_view text, Font font) {
    return {static_cast<double>(text.size()) * font.size, font.size};
}

TEST(CanvasRecording, NotesEveryOperationInOrder) {
    CanvasRecording canvas(sizeByLength);
    auto const font = Font::monospacedSystem(10, Font::Weight::medium);
    canvas.fillRect({0, 0, 10, 10}, Color::white(0, 0.35), CompositingOperation::sourceOver);
    canvas.fillRect({1, 1, 8, 8}, Color::clear(), CompositingOperation::copy);
    canvas.strokeRect({1.5, 1.5, 7, 7}, 1, Color::rgba(0, 0, 1, 1));
    canvas.fillRoundedRect({2, 2, 4, 3}, 4, 5, Color::white(0, 0.7));
    canvas.drawText("4 x 3", {3, 3}, {font, Color::white(1, 1)});
    EXPECT_THAT(
        canvas.operations(),
        ElementsAre(
            CanvasOperation(FillRectOperation{
                {0, 0, 10, 10}, Color::white(0, 0.35), CompositingOperation::sourceOver}),
            CanvasOperation(
                FillRectOperation{{1, 1, 8, 8}, Color::clear(), CompositingOperation::copy}),
            CanvasOperation(StrokeRectOperation{{1.5, 1.5, 7, 7}, 1, Color::rgba(0, 0, 1, 1)}),
            CanvasOperation(FillRoundedRectOperation{{2, 2, 4, 3}, 4, 5, Color::white(0, 0.7)}),
            CanvasOperation(DrawTextOperation{"4 x 3", {3, 3}, {font, Color::white(1, 1)}})));
}

TEST(CanvasRecording, BeginsWithSourceOverAndMeasuresAsItIsTold) {
    CanvasRecording const canvas(sizeByLength);
    EXPECT_EQ(canvas.compositingOperation(), CompositingOperation::sourceOver);
    EXPECT_EQ(canvas.sizeOfText("four", Font::system(12)), (Size{48, 12}));
    EXPECT_TRUE(canvas.operations().empty());
}

TEST(CanvasRecording, TwoRecordingsDifferWhereTheDrawingsDo) {
    CanvasRecording first(sizeByLength);
    CanvasRecording second(sizeByLength);
    first.strokeRect({0, 0, 10, 10}, 1, Color::clear());
    second.strokeRect({0, 0, 10, 10}, 1, Color::clear());
    EXPECT_EQ(first.operations(), second.operations());
    second.strokeRect({0, 0, 10, 10}, 2, Color::clear());
    EXPECT_NE(first.operations(), second.operations());
}

} // namespace
} // namespace trovel
