#include "tests/macos/run/runtime/runtime.h"

#include <cstring>
#include <mutex>
#include <utility>

// The accessors that the compiler writes for atomic properties call these.

namespace {

std::mutex& propertyMutex() {
    static auto* const mutex = new std::mutex;
    return *mutex;
}

void** variableOf(void* self, std::ptrdiff_t offset) {
    return reinterpret_cast<void**>(static_cast<char*>(self) + offset);
}

/// A reference of the property's own: to the object, or to a copy of it.
void* take(void* object, bool isCopied) {
    static auto const* const copy = objc::uniqueName("copy");
    if (object != nullptr && objc::isBlock(object)) return _Block_copy(object);
    if (object == nullptr || !isCopied) return objc_retain(object);
    auto* const copied = static_cast<objc::Object*>(object);
    return objc::methodOf(copied, copy)(copied, nullptr);
}

} // namespace

extern "C" {

void objc_setProperty(void* self, objc::Selector const*, std::ptrdiff_t offset, void* value,
                      bool /*isAtomic*/, bool isCopied) {
    auto* former = take(value, isCopied);
    {
        std::scoped_lock const lock(propertyMutex());
        std::swap(former, *variableOf(self, offset));
    }
    objc_release(former);
}

void* objc_getProperty(void* self, objc::Selector const*, std::ptrdiff_t offset,
                       bool /*isAtomic*/) {
    std::scoped_lock const lock(propertyMutex());
    return objc_autorelease(objc_retain(*variableOf(self, offset)));
}

void objc_getPropertyStruct(void* to, void const* from, std::ptrdiff_t size, bool /*isAtomic*/,
                            bool /*isStrong*/) {
    std::scoped_lock const lock(propertyMutex());
    std::memcpy(to, from, static_cast<std::size_t>(size));
}

void objc_setPropertyStruct(void* to, void const* from, std::ptrdiff_t size, bool /*isAtomic*/,
                            bool /*isStrong*/) {
    std::scoped_lock const lock(propertyMutex());
    std::memcpy(to, from, static_cast<std::size_t>(size));
}
}
