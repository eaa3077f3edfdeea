#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

namespace trovel {

struct CoreFoundationRelease {
    void operator()(void const* value) const { CFRelease(value); }
};

/// Owns one reference to a Core Foundation value, which ARC does not manage: what a function with
/// Create or Copy in its name returned, or what was retained for this purpose.
template <class Ref>
using CFOwner = std::unique_ptr<std::remove_pointer_t<Ref>, CoreFoundationRelease>;

} // namespace trovel
