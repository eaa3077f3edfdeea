#include "tests/macos/run/fakes/appkit.h"

#include <cstdio>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

NSFontWeight const NSFontWeightLight = -0.4;
NSFontWeight const NSFontWeightRegular = 0;
NSFontWeight const NSFontWeightMedium = 0.23;
NSFontWeight const NSFontWeightSemibold = 0.3;
NSFontWeight const NSFontWeightBold = 0.4;
NSNotificationName NSSystemColorsDidChangeNotification(@"NSSystemColorsDidChange");
NSAttributedStringKey const NSFontAttributeName = @"NSFont";
NSAttributedStringKey const NSForegroundColorAttributeName = @"NSColor";

namespace fakes {

std::string textOf(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string textOf(NSPoint point) {
    return textOf(point.x) + "," + textOf(point.y);
}

std::string textOf(NSRect rect) {
    return textOf(rect.origin) + "," + textOf(rect.size.width) + "," + textOf(rect.size.height);
}

namespace {

/// Notes what is drawn; drawing without a context does nothing.
void draw(std::string what) {
    if (mac().context != nil) mac().context->drawn_.push_back(std::move(what));
}

std::string nameOf(NSCompositingOperation operation) {
    return operation == NSCompositingOperationCopy ? "copy" : "over";
}

} // namespace

} // namespace fakes

/// What CGColorRef refers to: a colour as it looked when it was asked for.
@interface FakeColor : NSObject {
@public
    std::string look_;
}
@end

@implementation FakeColor
@end

@implementation NSColor

+ (NSColor*)named:(char const*)name {
    NSColor* const color = [[NSColor alloc] init];
    color->name_ = name;
    color->alpha_ = 1;
    return color;
}

+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha {
    NSColor* const color = [[NSColor alloc] init];
    color->red_ = red;
    color->green_ = green;
    color->blue_ = blue;
    color->alpha_ = alpha;
    return color;
}

+ (NSColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
    return [self colorWithSRGBRed:white green:white blue:white alpha:alpha];
}

+ (NSColor*)clearColor {
    return [self colorWithWhite:0 alpha:0];
}

+ (NSColor*)labelColor {
    return [self named:"label"];
}

+ (NSColor*)secondaryLabelColor {
    return [self named:"secondaryLabel"];
}

+ (NSColor*)tertiaryLabelColor {
    return [self named:"tertiaryLabel"];
}

+ (NSColor*)separatorColor {
    return [self named:"separator"];
}

+ (NSColor*)controlBackgroundColor {
    return [self named:"controlBackground"];
}

+ (NSColor*)controlAccentColor {
    return [self named:"controlAccent"];
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha {
    NSColor* const color = [[NSColor alloc] init];
    color->name_ = name_;
    color->red_ = red_;
    color->green_ = green_;
    color->blue_ = blue_;
    color->alpha_ = alpha;
    return color;
}

// A colour of the system's is resolved in the appearance that is current at that moment.
- (std::string)look {
    auto const alpha = alpha_ != 1 ? " " + fakes::textOf(alpha_) : "";
    if (!name_.empty()) return name_ + (fakes::mac().isDark ? " dark" : "") + alpha;
    return fakes::textOf(red_) + "," + fakes::textOf(green_) + "," + fakes::textOf(blue_) + alpha;
}

- (void)set {
    [self setFill];
    [self setStroke];
}

- (void)setFill {
    if (NSGraphicsContext* const context = fakes::mac().context) context->fill_ = [self look];
}

- (void)setStroke {
    if (NSGraphicsContext* const context = fakes::mac().context) context->stroke_ = [self look];
}

// Borrowed: it goes with its NSColor. Outside of a drawing appearance it is resolved anyhow.
- (CGColorRef)CGColor {
    FakeColor* const color = [[FakeColor alloc] init];
    bool const isResolved = name_.empty() || fakes::mac().resolvingAppearance > 0;
    color->look_ = [self look] + (isResolved ? "" : " unresolved");
    cgColor_ = color;
    return (__bridge CGColorRef)color;
}

@end

@implementation NSFont

+ (NSFont*)fontOf:(char const*)family size:(CGFloat)size weight:(NSFontWeight)weight {
    NSFont* const font = [[NSFont alloc] init];
    font->look_ = family + fakes::textOf(size) + " " + fakes::textOf(weight);
    font->size_ = size;
    return font;
}

+ (NSFont*)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight {
    return [self fontOf:"system " size:fontSize weight:weight];
}

+ (NSFont*)monospacedSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight {
    return [self fontOf:"monospaced " size:fontSize weight:weight];
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

@end

@implementation NSGraphicsContext
@synthesize compositingOperation = operation_;

- (instancetype)init {
    self = [super init];
    operation_ = NSCompositingOperationSourceOver;
    fill_ = "0,0,0";
    stroke_ = "0,0,0";
    return self;
}

+ (NSGraphicsContext*)currentContext {
    return fakes::mac().context;
}

+ (void)setCurrentContext:(NSGraphicsContext*)context {
    fakes::mac().context = context;
}

@end

@implementation NSBezierPath {
    std::string path_;
}
@synthesize lineWidth = lineWidth_;
@synthesize lineCapStyle = lineCapStyle_;

+ (NSBezierPath*)bezierPath {
    NSBezierPath* const path = [[NSBezierPath alloc] init];
    path->lineWidth_ = 1;
    return path;
}

+ (NSBezierPath*)bezierPathOf:(std::string)what {
    NSBezierPath* const path = [self bezierPath];
    path->path_ = std::move(what);
    return path;
}

+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect {
    return [self bezierPathOf:" rect " + fakes::textOf(rect)];
}

+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect {
    return [self bezierPathOf:" oval " + fakes::textOf(rect)];
}

+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect
                                   xRadius:(CGFloat)xRadius
                                   yRadius:(CGFloat)yRadius {
    return [self bezierPathOf:" rounded " + fakes::textOf(rect) + " by " + fakes::textOf(xRadius) +
                              "," + fakes::textOf(yRadius)];
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (void)moveToPoint:(NSPoint)point {
    path_ += " move " + fakes::textOf(point);
}

// "You must set the path's current point … before you invoke this method. If the path is empty,
// this method raises an NSGenericException."
- (void)lineToPoint:(NSPoint)point {
    fakes::require(!path_.empty(), "a line from no point");
    path_ += " line " + fakes::textOf(point);
}

- (void)stroke {
    NSGraphicsContext* const context = fakes::mac().context;
    if (context == nil) return;
    auto const cap = lineCapStyle_ == NSLineCapStyleRound ? " round" : "";
    fakes::draw("stroke" + path_ + " width " + fakes::textOf(lineWidth_) + cap + " in " +
                context->stroke_);
}

- (void)fill {
    NSGraphicsContext* const context = fakes::mac().context;
    if (context == nil) return;
    fakes::draw("fill" + path_ + " in " + context->fill_ + " " +
                fakes::nameOf(context.compositingOperation));
}

@end

extern "C" void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation) {
    NSGraphicsContext* const context = fakes::mac().context;
    if (context == nil) return;
    fakes::draw("fill rect " + fakes::textOf(rect) + " in " + context->fill_ + " " +
                fakes::nameOf(operation));
}

@implementation NSString (NSStringDrawing)

// Every character is as wide as half of the font is high.
- (NSSize)sizeWithAttributes:(NSDictionary*)attributes {
    NSFont* const font = attributes[NSFontAttributeName];
    fakes::require(font != nil, "a text without a font");
    return NSMakeSize(static_cast<double>(fakes::toText(self).size()) * font->size_ / 2,
                      font->size_);
}

- (void)drawAtPoint:(NSPoint)point withAttributes:(NSDictionary*)attributes {
    NSFont* const font = attributes[NSFontAttributeName];
    NSColor* const color = attributes[NSForegroundColorAttributeName];
    fakes::draw("text \"" + fakes::toText(self) + "\" at " + fakes::textOf(point) + " in " +
                font->look_ + " " + [color look]);
}

@end

@implementation CALayer {
    id borderColor_;
    id backgroundColor_;
    id shadowColor_;
}

// A layer keeps its colours. A change inside an animation group that allows it is animated:
// "…any animatable property changed … is implicitly animated" (allowsImplicitAnimation).
#define COLOR(getter, setter, variable)                                                            \
    -(CGColorRef)getter {                                                                          \
        return (__bridge CGColorRef)variable;                                                      \
    }                                                                                              \
    -(void)setter : (CGColorRef)color {                                                            \
        FakeColor* const value = (__bridge FakeColor*)color;                                       \
        fakes::noteAnimation(#getter);                                                             \
        variable = value;                                                                          \
    }
COLOR(borderColor, setBorderColor, borderColor_)
COLOR(backgroundColor, setBackgroundColor, backgroundColor_)
COLOR(shadowColor, setShadowColor, shadowColor_)
#undef COLOR

@end

@implementation CATransaction

+ (void)flush {
    fakes::mac().record("flush layers");
}

@end

@implementation NSAnimationContext
@synthesize duration = duration_;
@synthesize allowsImplicitAnimation = allowsImplicitAnimation_;

+ (void)runAnimationGroup:(void (^)(NSAnimationContext*))changes {
    NSAnimationContext* const former = fakes::mac().animation;
    NSAnimationContext* const context = [[NSAnimationContext alloc] init];
    context->duration_ = 0.25;
    fakes::mac().animation = context;
    changes(context);
    fakes::mac().animation = former;
}

@end

namespace fakes {

void noteAnimation(char const* property) {
    NSAnimationContext* const animation = mac().animation;
    if (animation == nil || !animation.allowsImplicitAnimation) return;
    mac().record(std::string("animate ") + property + " " + textOf(animation.duration));
}

std::string lookOf(CGColorRef color) {
    if (color == nullptr) return "none";
    FakeColor* const fake = (__bridge FakeColor*)color;
    return fake->look_;
}

} // namespace fakes
