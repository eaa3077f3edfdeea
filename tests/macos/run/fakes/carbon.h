#pragma once

#import <AppKit/AppKit.h>

namespace fakes {

/// Whether the keys are a hot key of somebody's, whose handlers then get the press.
bool pressHotKey(unsigned keyCode, NSEventModifierFlags flags);

} // namespace fakes
