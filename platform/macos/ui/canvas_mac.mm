#include "platform/macos/ui/canvas_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"

namespace trovel {

namespace {

NSCompositingOperation toNative(CompositingOperation operation) {
    switch (operation) {
    case CompositingOperation::sourceOver:
        return NSCompositingOperationSourceOver;
    case CompositingOperation::copy:
        return NSCompositingOperationCopy;
    }
}

} // namespace

CompositingOperation CanvasMac::compositingOperation() const {
    // Without a context the answer is not the copy operation either.
    auto const operation = NSGraphicsContext.currentContext.compositingOperation;
    return operation == NSCompositingOperationCopy ? CompositingOperation::copy
                                                   : CompositingOperation::sourceOver;
}

void CanvasMac::fillRect(Rect rect, Color color, CompositingOperation operation) {
    [toNSColor(color) setFill];
    NSRectFillUsingOperation(toNSRect(rect), toNative(operation));
}

void CanvasMac::strokeRect(Rect rect, double lineWidth, Color color) {
    NSBezierPath* const path = [NSBezierPath bezierPathWithRect:toNSRect(rect)];
    path.lineWidth = lineWidth;
    [toNSColor(color) setStroke];
    [path stroke];
}

void CanvasMac::fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) {
    [toNSColor(color) setFill];
    [[NSBezierPath bezierPathWithRoundedRect:toNSRect(rect) xRadius:radiusX yRadius:radiusY] fill];
}

void CanvasMac::strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                            Color color) {
    NSBezierPath* const path = [NSBezierPath bezierPath];
    path.lineWidth = lineWidth;
    path.lineCapStyle = NSLineCapStyleRound;
    for (auto const& line : lines) {
        if (line.empty()) continue;
        [path moveToPoint:toNSPoint(line.front())];
        for (auto const& point : std::span(line).subspan(1))
            [path lineToPoint:toNSPoint(point)];
    }
    [toNSColor(color) setStroke];
    [path stroke];
}

void CanvasMac::fillOval(Rect rect, Color color) {
    [toNSColor(color) setFill];
    [[NSBezierPath bezierPathWithOvalInRect:toNSRect(rect)] fill];
}

void CanvasMac::drawText(std::string_view text, Point origin, TextAttributes const& attributes) {
    [toNSString(text) drawAtPoint:toNSPoint(origin)
                   withAttributes:@{
                       NSFontAttributeName : toNSFont(attributes.font),
                       NSForegroundColorAttributeName : toNSColor(attributes.color),
                   }];
}

Size CanvasMac::sizeOfText(std::string_view text, Font font) const {
    return fromNSSize(
        [toNSString(text) sizeWithAttributes:@{NSFontAttributeName : toNSFont(font)}]);
}

} // namespace trovel
