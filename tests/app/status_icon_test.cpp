#include "app/status_icon.h"

#include "platform/ui/canvas_recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace trovel {
namespace {

TEST(StatusIcon, IsATemplateOfEighteenPoints) {
    auto const icon = statusIcon("Trovel");
    EXPECT_EQ(icon.size, (Size{18, 18}));
    EXPECT_TRUE(icon.isTemplate);
}

TEST(StatusIcon, IsFourBracketsAroundADot) {
    CanvasRecording canvas([](auto, auto) { return Size(); });
    EXPECT_TRUE(statusIcon("Trovel").draw(canvas, {0, 0, 18, 18}));
    auto const black = Color::rgba(0, 0, 0, 1);
    StrokeLinesOperation const brackets{{{{2, 7}, {2, 2}, {7, 2}},
                                         {{11, 2}, {16, 2}, {16, 7}},
                                         {{16, 11}, {16, 16}, {11, 16}},
                                         {{7, 16}, {2, 16}, {2, 11}}},
                                        1.5,
                                        black};
    EXPECT_THAT(canvas.operations(),
                testing::ElementsAre(CanvasOperation(brackets),
                                     CanvasOperation(FillOvalOperation{{7.5, 7.5, 3, 3}, black})));
}

TEST(StatusIcon, FillsTheRectangleThatItIsGiven) {
    CanvasRecording canvas([](auto, auto) { return Size(); });
    EXPECT_TRUE(statusIcon("Trovel").draw(canvas, {10, 20, 22, 22}));
    EXPECT_EQ(std::get<FillOvalOperation>(canvas.operations().back()).rect,
              (Rect{19.5, 29.5, 3, 3}));
}

} // namespace
} // namespace trovel
