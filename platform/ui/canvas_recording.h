#pragma once

#include "platform/ui/canvas.h"

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace trovel {

/// What was asked of a canvas, as values that can be compared, one struct an operation.
struct FillRectOperation {
    Rect rect;
    Color color;
    CompositingOperation operation = CompositingOperation::sourceOver;
    friend bool operator==(FillRectOperation const&, FillRectOperation const&) = default;
};
struct StrokeRectOperation {
    Rect rect;
    double lineWidth = 1;
    Color color;
    friend bool operator==(StrokeRectOperation const&, StrokeRectOperation const&) = default;
};
struct FillRoundedRectOperation {
    Rect rect;
    double radiusX = 0;
    double radiusY = 0;
    Color color;
    friend bool operator==(FillRoundedRectOperation const&,
                           FillRoundedRectOperation const&) = default;
};
struct StrokeLinesOperation {
    std::vector<std::vector<Point>> lines;
    double lineWidth = 1;
    Color color;
    friend bool operator==(StrokeLinesOperation const&, StrokeLinesOperation const&) = default;
};
struct FillOvalOperation {
    Rect rect;
    Color color;
    friend bool operator==(FillOvalOperation const&, FillOvalOperation const&) = default;
};
struct DrawTextOperation {
    std::string text;
    Point origin;
    TextAttributes attributes;
    friend bool operator==(DrawTextOperation const&, DrawTextOperation const&) = default;
};

using CanvasOperation =
    std::variant<FillRectOperation, StrokeRectOperation, FillRoundedRectOperation,
                 StrokeLinesOperation, FillOvalOperation, DrawTextOperation>;

/// A canvas that only notes what is drawn, in order. Two recordings of one view tell what changed
/// between them.
class CanvasRecording final : public Canvas {
public:
    using TextMeasure = std::function<Size(std::string_view, Font)>;

    explicit CanvasRecording(TextMeasure measure) : measure_(std::move(measure)) {}
    ~CanvasRecording() = default;

    [[nodiscard]] CompositingOperation compositingOperation() const override {
        return CompositingOperation::sourceOver;
    }
    void fillRect(Rect rect, Color color, CompositingOperation operation) override {
        operations_.emplace_back(FillRectOperation{rect, color, operation});
    }
    void strokeRect(Rect rect, double lineWidth, Color color) override {
        operations_.emplace_back(StrokeRectOperation{rect, lineWidth, color});
    }
    void fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) override {
        operations_.emplace_back(FillRoundedRectOperation{rect, radiusX, radiusY, color});
    }
    void strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                     Color color) override {
        operations_.emplace_back(
            StrokeLinesOperation{{lines.begin(), lines.end()}, lineWidth, color});
    }
    void fillOval(Rect rect, Color color) override {
        operations_.emplace_back(FillOvalOperation{rect, color});
    }
    void drawText(std::string_view text, Point origin, TextAttributes const& attributes) override {
        operations_.emplace_back(DrawTextOperation{std::string(text), origin, attributes});
    }
    [[nodiscard]] Size sizeOfText(std::string_view text, Font font) const override {
        return measure_(text, font);
    }

    [[nodiscard]] std::vector<CanvasOperation> const& operations() const { return operations_; }

private:
    TextMeasure measure_;
    std::vector<CanvasOperation> operations_;
};

} // namespace trovel
