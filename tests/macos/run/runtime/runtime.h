#pragma once

#include "tests/macos/run/runtime/abi.h"

#include <cstddef>
#include <map>
#include <string>

// An Objective-C runtime for programs that Clang compiled for ObjFW's: as much of it as AppKit's
// fakes and the sources that run on them need, with ARC and blocks. There is no forwarding, no
// +load, no +initialize, and an Objective-C exception is the end of the process, as is any misuse
// that the real runtime would not survive either.

namespace objc {

/// Ends the process and says why.
[[noreturn]] void fatal(std::string const& reason);

/// The one address of a method's name.
[[nodiscard]] char const* uniqueName(char const* name);

/// Null when nobody implements a class of that name. Any thread.
[[nodiscard]] Class* findClass(char const* name);

/// Null when neither the class nor what it inherits from has the method. Any thread.
[[nodiscard]] Method findMethod(Class* type, char const* uniqueName);

/// A method of the class itself; what it inherits does not count.
[[nodiscard]] Method ownMethod(Class const& type, char const* uniqueName);

/// What an object answers a message with; its absence is fatal.
[[nodiscard]] Method methodOf(Object* object, char const* uniqueName);

[[nodiscard]] bool isMetaclass(Class const& type);

/// A new object with one reference, its C++ members made.
[[nodiscard]] Object* allocate(Class* type);

/// Ends an object whose last reference has gone.
void dispose(Object* object);

/// How many objects live of each class, blocks among them as "block". Any thread.
[[nodiscard]] std::map<std::string, long> liveObjects();

/// Counts an object that comes or goes for `liveObjects`.
void countLive(std::string const& name, long difference);

/// Where an object has its instance variable of that name, as a debugger would look for it.
[[nodiscard]] void* variableOf(Object* object, std::string const& name);

[[nodiscard]] bool isBlock(void const* object);
[[nodiscard]] bool isStackBlock(void const* object);

} // namespace objc

// What the compiler calls, as far as other files of the runtime do so too.
extern "C" {
void* objc_retain(void* object);
void objc_release(void* object);
void* objc_autorelease(void* object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
objc::Method objc_msg_lookup(objc::Object* receiver, objc::Selector const* selector);
void* _Block_copy(void const* block);
void _Block_release(void const* block);
extern void* const _NSConcreteStackBlock[32];
extern void* const _NSConcreteGlobalBlock[32];
extern void* const _NSConcreteMallocBlock[32];
}
