#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace fakes {

/// The colour of each pixel (0xRRGGBB), origin at the top left.
using Colors = std::function<std::uint32_t(long x, long y)>;

} // namespace fakes

/// What CGImageRef refers to: a part of a picture whose colours are worked out when they are asked
/// for.
@interface FakeImage : NSObject {
@public
    size_t width_;
    size_t height_;
    long left_; // where it lies in the picture that it was cut from
    long top_;
    std::shared_ptr<fakes::Colors const> colors_; // of the whole picture
}
/// Its colours, row by row from the top.
- (std::vector<std::uint32_t>)pixels;
@end

namespace fakes {

/// A picture with one reference, which is the caller's.
[[nodiscard]] CGImageRef _Nonnull makePicture(std::size_t width, std::size_t height, Colors colors);

[[nodiscard]] FakeImage* _Nonnull pictureOf(CGImageRef _Nonnull image);

} // namespace fakes
