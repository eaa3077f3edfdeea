#include "tests/macos/run/fakes/images.h"

#include "tests/macos/run/fakes/appkit.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

NSImageName const NSImageNameApplicationIcon = @"NSApplicationIcon";

@implementation FakeImage

- (std::vector<std::uint32_t>)pixels {
    std::vector<std::uint32_t> pixels;
    for (long y = 0; y < static_cast<long>(height_); ++y) {
        for (long x = 0; x < static_cast<long>(width_); ++x) {
            pixels.push_back((*colors_)(left_ + x, top_ + y));
        }
    }
    return pixels;
}

@end

namespace fakes {

CGImageRef makePicture(std::size_t width, std::size_t height, Colors colors) {
    FakeImage* const image = [[FakeImage alloc] init];
    image->width_ = width;
    image->height_ = height;
    image->colors_ = std::make_shared<Colors const>(std::move(colors));
    return (CGImageRef) const_cast<void*>((__bridge_retained void const*)image);
}

FakeImage* pictureOf(CGImageRef image) {
    return (__bridge FakeImage*)static_cast<void*>(image);
}

} // namespace fakes

extern "C" {

size_t CGImageGetWidth(CGImageRef image) {
    return image != nullptr ? fakes::pictureOf(image)->width_ : 0;
}

size_t CGImageGetHeight(CGImageRef image) {
    return image != nullptr ? fakes::pictureOf(image)->height_ : 0;
}

CGImageRef CGImageRetain(CGImageRef image) {
    if (image != nullptr) CFRetain(image);
    return image;
}

// "1. Adjusts the rect parameter to integral bounds by calling the function CGRectIntegral.
// 2. Intersects the rect with a rectangle whose origin is (0,0) and size is equal to the size of
// the image. 3. References the pixels within the resulting rectangle." CGRectIntegral, as all of
// CGGeometry, takes a rectangle of negative size for the same with its origin at the other corner.
CGImageRef CGImageCreateWithImageInRect(CGImageRef image, CGRect rect) {
    if (image == nullptr) return nullptr;
    auto const* const whole = fakes::pictureOf(image);
    std::pair<double, double> const across =
        std::minmax(rect.origin.x, rect.origin.x + rect.size.width);
    std::pair<double, double> const along =
        std::minmax(rect.origin.y, rect.origin.y + rect.size.height);
    if (rect.size.width == 0 || rect.size.height == 0) return nullptr;
    auto const left = std::max(0L, std::lround(std::floor(across.first)));
    auto const top = std::max(0L, std::lround(std::floor(along.first)));
    auto const width = static_cast<long>(whole->width_);
    auto const height = static_cast<long>(whole->height_);
    auto const right = std::min(width, std::lround(std::ceil(across.second)));
    auto const bottom = std::min(height, std::lround(std::ceil(along.second)));
    if (right <= left || bottom <= top) return nullptr;
    FakeImage* const part = [[FakeImage alloc] init];
    part->width_ = static_cast<size_t>(right - left);
    part->height_ = static_cast<size_t>(bottom - top);
    part->left_ = whole->left_ + left;
    part->top_ = whole->top_ + top;
    part->colors_ = whole->colors_;
    return (CGImageRef) const_cast<void*>((__bridge_retained void const*)part);
}
}

@implementation NSImage

+ (NSImage*)imageNamed:(NSImageName)name {
    NSImage* const image = [[NSImage alloc] init];
    image->name_ = fakes::toText(name);
    return image;
}

+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)flipped
           drawingHandler:(BOOL (^)(NSRect))drawingHandler {
    NSImage* const image = [[NSImage alloc] init];
    image->size_ = size;
    image->drawing_ = drawingHandler;
    image->name_ = flipped ? "drawn flipped" : "drawn";
    return image;
}

// "…or nil if the system does not have a symbol of that name": here names without a space.
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description {
    auto const text = fakes::toText(name);
    if (text.empty() || text.find(' ') != std::string::npos) return nil;
    NSImage* const image = [[NSImage alloc] init];
    image->name_ = "symbol " + text;
    image->description_ = fakes::toText(description);
    return image;
}

// "Creates a new symbol image with the specified configuration."
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    fakes::require(configuration != nil, "a symbol without a configuration");
    NSImage* const image = [[NSImage alloc] init];
    image->name_ = name_ + " configured";
    image->description_ = description_;
    return image;
}

- (instancetype)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size {
    self = [super init];
    fakes::require(cgImage != nullptr, "an image of no picture");
    picture_ = fakes::pictureOf(cgImage);
    size_ = size;
    return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (NSString*)accessibilityDescription {
    return fakes::toNative(description_);
}

- (void)setAccessibilityDescription:(NSString*)description {
    description_ = fakes::toText(description);
}

- (void)setTemplate:(BOOL)isTemplate {
    isTemplate_ = isTemplate;
}

- (BOOL)isTemplate {
    return isTemplate_;
}

// The fake's own format: the sizes and then the pixels.
- (NSData*)TIFFRepresentation {
    FakeImage* const picture = picture_;
    if (picture == nil) return nil;
    std::vector<std::uint32_t> words{static_cast<std::uint32_t>(picture->width_),
                                     static_cast<std::uint32_t>(picture->height_)};
    auto const pixels = [picture pixels];
    words.insert(words.end(), pixels.begin(), pixels.end());
    return [NSData dataWithBytes:words.data() length:words.size() * sizeof words.front()];
}

// "…the image … owns the returned CGImage."
- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)referenceContext
                               hints:(NSDictionary*)hints {
    if (picture_ == nil) {
        auto const width = static_cast<std::size_t>(proposedDestRect->size.width);
        auto const height = static_cast<std::size_t>(proposedDestRect->size.height);
        CGImageRef const made = fakes::makePicture(width, height, [](long, long) { return 0; });
        picture_ = fakes::pictureOf(made);
        CFRelease(made);
    }
    return (__bridge CGImageRef)picture_;
}

// A drawing handler draws when the image is shown.
- (void)draw {
    NSGraphicsContext* const context = fakes::mac().context;
    if (drawing_ != nil) {
        drawing_(NSMakeRect(0, 0, size_.width, size_.height));
    } else if (context != nil) {
        context->drawn_.push_back("image " + name_);
    }
}

@end

@implementation NSImageRep
@end

@implementation NSBitmapImageRep {
    NSData* data_;
}

+ (instancetype)imageRepWithData:(NSData*)data {
    if (data == nil) return nil;
    NSBitmapImageRep* const bitmap = [[NSBitmapImageRep alloc] init];
    bitmap->data_ = data;
    return bitmap;
}

- (NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                        properties:(NSDictionary*)properties {
    return storageType == NSBitmapImageFileTypePNG ? data_ : nil;
}

@end
