#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/fakes/images.h"

#import <ScreenCaptureKit/ScreenCaptureKit.h>

#include <algorithm>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

@interface SCDisplay () {
@public
    CGDirectDisplayID number_;
    NSInteger width_;
    NSInteger height_;
}
@end

@interface SCShareableContent () {
@public
    NSArray<SCDisplay*>* displays_;
}
@end

@interface SCContentFilter () {
@public
    SCDisplay* display_;
}
@end

namespace {

/// Makes an object whose class lets nobody else make one.
template <class T> T* _Nonnull make() {
    return [static_cast<id>([T class]) alloc];
}

/// Runs the block on the framework's own queue when its answer comes, if it does.
void answer(void (^_Nonnull block)(void)) {
    auto& mac = fakes::mac();
    if (mac.captureService.neverAnswers) return;
    dispatch_queue_t const queue = dispatch_queue_create("fakes.screencapture", nullptr);
    mac.runLoop.later(mac.captureService.delay, [queue, block] { dispatch_async(queue, block); });
}

NSError* _Nullable problem() {
    auto& mac = fakes::mac();
    // "The user declined" (SCStreamErrorUserDeclined).
    if (!mac.mayRecordScreen) return [NSError errorWithText:"The user declined TCCs"];
    if (!mac.captureService.error.empty()) {
        return [NSError errorWithText:mac.captureService.error];
    }
    return nil;
}

/// What the display shows, and in it, where its configuration asks for it, the pointer.
CGImageRef _Nonnull takePicture(CGDirectDisplayID number, std::size_t width, std::size_t height,
                                bool showsCursor) {
    constexpr std::uint32_t kPointer = 0xff00ff;
    constexpr std::uint32_t kCovered = 0x00ff00;
    auto& mac = fakes::mac();
    auto const display = std::ranges::find(mac.displays, number, &fakes::Display::number);
    auto const scale = static_cast<double>(width) / display->frame.size.width;
    bool const isCovered =
        std::ranges::any_of(mac.shown, [](auto const& each) { return each.window != nil; });
    NSPoint const pointer = mac.pointer;
    auto const top = display->frame.origin.y + display->frame.size.height;
    return fakes::makePicture(width, height, [=](long x, long y) {
        auto const acrossPointer = static_cast<double>(x) / scale + display->frame.origin.x;
        auto const alongPointer = top - static_cast<double>(y) / scale;
        if (showsCursor && std::abs(acrossPointer - pointer.x) < 8 &&
            std::abs(alongPointer - pointer.y) < 8) {
            return kPointer;
        }
        return isCovered ? kCovered : fakes::Mac::colorAt(number, x, y);
    });
}

} // namespace

@implementation SCDisplay

- (CGDirectDisplayID)displayID {
    return number_;
}

- (NSInteger)width {
    return width_;
}

- (NSInteger)height {
    return height_;
}

@end

@implementation SCShareableContent

+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:
                                     (void (^)(SCShareableContent*, NSError*))completionHandler {
    fakes::require(!excludeDesktopWindows && !onScreenWindowsOnly,
                   "part of the desktop is missing");
    auto const handler = completionHandler;
    answer(^{
      NSError* const error = problem();
      SCShareableContent* const content = error == nil ? make<SCShareableContent>() : nil;
      NSMutableArray<SCDisplay*>* const displays = [NSMutableArray array];
      for (auto const& display : fakes::mac().displays) {
          SCDisplay* const listed = make<SCDisplay>();
          listed->number_ = display.number;
          listed->width_ = static_cast<NSInteger>(display.frame.size.width);
          listed->height_ = static_cast<NSInteger>(display.frame.size.height);
          [displays addObject:listed];
      }
      if (content != nil) content->displays_ = displays;
      handler(content, error);
    });
}

- (NSArray<SCDisplay*>*)displays {
    return displays_;
}

@end

@implementation SCContentFilter

- (instancetype)initWithDisplay:(SCDisplay*)display excludingWindows:(NSArray*)excluded {
    self = [super init];
    fakes::require(display != nil && excluded != nil && excluded.count == 0, "a filter of nothing");
    display_ = display;
    return self;
}

@end

@implementation SCStreamConfiguration
@synthesize width = width_;
@synthesize height = height_;
@synthesize scalesToFit = scalesToFit_;
@synthesize showsCursor = showsCursor_;

// "The default value is 1920" and "1080"; the cursor is shown by default.
- (instancetype)init {
    self = [super init];
    width_ = 1920;
    height_ = 1080;
    showsCursor_ = YES;
    return self;
}

@end

@implementation SCScreenshotManager

// The picture is the handler's for the length of its call.
+ (void)captureImageWithFilter:(SCContentFilter*)contentFilter
                 configuration:(SCStreamConfiguration*)config
             completionHandler:(void (^)(CGImageRef, NSError*))completionHandler {
    auto const handler = completionHandler;
    auto const number = contentFilter->display_->number_;
    auto const width = config.width;
    auto const height = config.height;
    auto const showsCursor = config.showsCursor;
    answer(^{
      if (NSError* const error = problem()) return handler(nullptr, error);
      if (!fakes::mac().captureService.hasPicture) return handler(nullptr, nil);
      CGImageRef const picture = takePicture(number, width, height, showsCursor);
      handler(picture, nil);
      CFRelease(picture);
    });
}

@end
