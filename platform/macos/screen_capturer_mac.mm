#include "platform/macos/screen_capturer_mac.h"

#include "platform/fatal.h"
#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/image_mac.h"

#include <cerrno>
#include <chrono>
#include <utility>

namespace trovel {

namespace {

std::unexpected<std::string> failure(NSError* _Nullable error) {
    return std::unexpected(fromNSString(error.localizedDescription));
}

std::unexpected<std::string> timeOut() {
    return failure([NSError errorWithDomain:NSPOSIXErrorDomain code:ETIMEDOUT userInfo:nil]);
}

/// Whether the answer came in time. A service that never answers must not take the worker along.
bool isAnswered(dispatch_semaphore_t _Nonnull answered) {
    // The system may be asking the user meanwhile.
    constexpr std::chrono::nanoseconds kPatience = std::chrono::seconds(120);
    return dispatch_semaphore_wait(answered, dispatch_time(DISPATCH_TIME_NOW, kPatience.count())) ==
           0;
}

SCStreamConfiguration* _Nonnull toNative(StreamConfiguration const& configuration) {
    SCStreamConfiguration* const native = [[SCStreamConfiguration alloc] init];
    native.width = static_cast<size_t>(configuration.width);
    native.height = static_cast<size_t>(configuration.height);
    native.scalesToFit = configuration.scalesToFit;
    native.showsCursor = configuration.showsCursor;
    return native;
}

} // namespace

ScreenCapturer::Result<std::vector<CaptureDisplay>> ScreenCapturerMac::shareableDisplays() {
    dispatch_semaphore_t const answered = dispatch_semaphore_create(0);
    __block SCShareableContent* content = nil;
    __block NSError* error = nil;
    [SCShareableContent
        getShareableContentExcludingDesktopWindows:NO
                               onScreenWindowsOnly:NO
                                 completionHandler:^(SCShareableContent* _Nullable shareable,
                                                     NSError* _Nullable problem) {
                                   content = shareable;
                                   error = problem;
                                   dispatch_semaphore_signal(answered);
                                 }];
    // An answer that comes later finds its variables in the block, which frees them.
    if (!isAnswered(answered)) return timeOut();
    if (content == nil) return failure(error);
    displays_.clear();
    std::vector<CaptureDisplay> displays;
    for (SCDisplay* display in content.displays) {
        displays_.emplace(display.displayID, display);
        displays.push_back({display.displayID, static_cast<double>(display.width),
                            static_cast<double>(display.height)});
    }
    return displays;
}

ScreenCapturer::Result<std::shared_ptr<PixelImage const>>
ScreenCapturerMac::captureImage(CaptureDisplay const& display,
                                StreamConfiguration const& configuration) {
    auto const found = displays_.find(display.displayId);
    if (found == displays_.end()) fatal("a display was to be captured that is not listed");
    SCContentFilter* const filter = [[SCContentFilter alloc] initWithDisplay:found->second
                                                            excludingWindows:@[]];
    dispatch_semaphore_t const answered = dispatch_semaphore_create(0);
    __block CFOwner<CGImageRef> image;
    __block NSError* error = nil;
    [SCScreenshotManager
        captureImageWithFilter:filter
                 configuration:toNative(configuration)
             completionHandler:^(CGImageRef _Nullable picture, NSError* _Nullable problem) {
               // The picture is borrowed for the length of this call.
               image.reset(CGImageRetain(picture));
               error = problem;
               dispatch_semaphore_signal(answered);
             }];
    if (!isAnswered(answered)) return timeOut();
    if (!image) return failure(error);
    return std::make_shared<PixelImageMac>(std::move(image));
}

} // namespace trovel
