#pragma once

#include <objc/base.h>

// With ARC the dispatch types are Objective-C objects.
@class NSObject;
@protocol OS_dispatch_queue;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_main_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_global_t;
@protocol OS_dispatch_queue_attr;
typedef NSObject<OS_dispatch_queue_attr>* dispatch_queue_attr_t;
@protocol OS_dispatch_semaphore;
typedef NSObject<OS_dispatch_semaphore>* dispatch_semaphore_t;
#define DISPATCH_QUEUE_SERIAL nullptr
typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;
typedef long dispatch_once_t;
// There is no DISPATCH_TIME_FOREVER: nothing here may wait without an end.
#define DISPATCH_TIME_NOW (0ull)
extern "C" {
dispatch_queue_main_t _Nonnull dispatch_get_main_queue(void);
dispatch_queue_global_t _Nonnull dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
dispatch_queue_t _Nonnull dispatch_queue_create(
    char const* _Nullable label, dispatch_queue_attr_t _Nullable attr) NS_RETURNS_RETAINED;
dispatch_semaphore_t _Nonnull dispatch_semaphore_create(intptr_t value) NS_RETURNS_RETAINED;
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t _Nonnull dsema);
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t _Nonnull dsema, dispatch_time_t timeout);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
void dispatch_once(dispatch_once_t* _Nonnull predicate,
                   __attribute__((noescape)) dispatch_block_t _Nonnull block);
}
