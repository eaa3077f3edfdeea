#pragma once

// Base macros and types of the declarations in this folder.

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_ENUM(type, name) enum __attribute__((enum_extensibility(open))) name : type
#define NS_OPTIONS(type, name)                                                                     \
    type name;                                                                                     \
    enum __attribute__((flag_enum)) : type
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_RETURNS_RETAINED __attribute__((ns_returns_retained))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_NOESCAPE __attribute__((noescape))
#define NS_ROOT_CLASS __attribute__((objc_root_class))
#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_IMPLICIT_BRIDGING_ENABLED _Pragma("clang arc_cf_code_audited begin")
#define CF_IMPLICIT_BRIDGING_DISABLED _Pragma("clang arc_cf_code_audited end")
#define API_AVAILABLE_MAC(v) __attribute__((availability(macos, introduced = v)))
// The analyzer's own mark for "main thread only"; carries no semantics for the compiler.
#define DECL_MAIN_THREAD __attribute__((annotate("main-thread")))
#define FOUNDATION_EXPORT extern "C"
#define APPKIT_EXTERN extern "C"
#define CF_EXPORT extern "C"

typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define IBAction void

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
typedef double NSTimeInterval;
