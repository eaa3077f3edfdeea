#pragma once

/// The XKB extension's requests. Its header names fields with a C++ keyword, so it is read here,
/// once, with that word replaced; nobody else includes it.

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>

#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
