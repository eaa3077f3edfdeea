#include "tests/macos/run/runtime/runtime.h"

#include <mutex>
#include <thread>
#include <vector>

namespace objc {

namespace {

/// What waits for its release, by thread. A pool is a place in that list.
struct Pools {
    std::mutex mutex;
    std::map<std::thread::id, std::vector<void*>> objects;
};

Pools& pools() {
    static auto* const all = new Pools;
    return *all;
}

/// The next object to release until only `count` are left; null then.
void* takeBeyond(std::size_t count) {
    std::scoped_lock const lock(pools().mutex);
    auto const found = pools().objects.find(std::this_thread::get_id());
    if (found == pools().objects.end()) return nullptr;
    if (found->second.size() <= count) {
        if (count == 0) pools().objects.erase(found);
        return nullptr;
    }
    auto* const object = found->second.back();
    found->second.pop_back();
    return object;
}

} // namespace

} // namespace objc

extern "C" {

void* objc_autorelease(void* object) {
    if (object == nullptr) return nullptr;
    std::scoped_lock const lock(objc::pools().mutex);
    objc::pools().objects[std::this_thread::get_id()].push_back(object);
    return object;
}

void* objc_autoreleasePoolPush() {
    std::scoped_lock const lock(objc::pools().mutex);
    // Counted from one: no pool is null.
    return reinterpret_cast<void*>(objc::pools().objects[std::this_thread::get_id()].size() + 1);
}

void objc_autoreleasePoolPop(void* pool) {
    auto const count = reinterpret_cast<std::size_t>(pool) - 1;
    while (auto* const object = objc::takeBeyond(count)) objc_release(object);
}

void* objc_retainAutorelease(void* object) {
    return objc_autorelease(objc_retain(object));
}

// The short cuts that hand a result on without a pool are only faster.
void* objc_autoreleaseReturnValue(void* object) {
    return objc_autorelease(object);
}

void* objc_retainAutoreleaseReturnValue(void* object) {
    return objc_retainAutorelease(object);
}

void* objc_retainAutoreleasedReturnValue(void* object) {
    return objc_retain(object);
}

void* objc_unsafeClaimAutoreleasedReturnValue(void* object) {
    return object;
}
}
