#include "tests/macos/run/runtime/runtime.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The class of the strings in the program's text, by the name that the compiler gives it.
extern "C" objc::Class _OBJC_CLASS_NSConstantString;

namespace objc {

namespace {

/// What lies in front of every object.
struct Header {
    std::atomic<long> references;
    long padding;
};

constexpr long kGoing = 1L << 40; // more references than anything has

struct Objects {
    std::recursive_mutex mutex; // held while an object's last reference or a weak one goes
    std::unordered_map<void*, std::unordered_set<void**>> weak;
    std::map<std::string, long> live;
};

Objects& objects() {
    static auto* const all = new Objects;
    return *all;
}

std::atomic<long>& referencesTo(void* object) {
    return (static_cast<Header*>(object) - 1)->references;
}

/// Classes and the strings of the program's text, which nobody counts.
bool isPermanent(Object const* object) {
    return object->isa == &_OBJC_CLASS_NSConstantString || isMetaclass(*object->isa);
}

/// Calls the C++ part of each class of the object, from the root down or up to it.
void callEach(Object* object, char const* name, bool isFromRoot) {
    std::vector<Class const*> types;
    for (auto* type = object->isa; type != nullptr; type = type->superclass) types.push_back(type);
    if (isFromRoot) types = {types.rbegin(), types.rend()};
    for (auto const* const type : types) {
        if (auto const method = ownMethod(*type, name)) method(object, nullptr);
    }
}

} // namespace

Object* allocate(Class* type) {
    static auto const* const construct = uniqueName(".cxx_construct");
    auto* const memory =
        std::calloc(1, sizeof(Header) + static_cast<std::size_t>(type->instanceSize));
    auto* const header = static_cast<Header*>(memory);
    header->references = 1;
    auto* const object = reinterpret_cast<Object*>(header + 1);
    object->isa = type;
    countLive(type->name, 1);
    callEach(object, construct, true);
    return object;
}

void dispose(Object* object) {
    static auto const* const destruct = uniqueName(".cxx_destruct");
    callEach(object, destruct, false);
    countLive(object->isa->name, -1);
    std::free(reinterpret_cast<Header*>(object) - 1);
}

std::map<std::string, long> liveObjects() {
    std::scoped_lock const lock(objects().mutex);
    return objects().live;
}

void countLive(std::string const& name, long difference) {
    std::scoped_lock const lock(objects().mutex);
    auto& count = objects().live[name];
    count += difference;
    if (count == 0) objects().live.erase(name);
}

} // namespace objc

extern "C" {

void* objc_retain(void* object) {
    if (object == nullptr) return nullptr;
    // A block on the stack is only copied where the compiler asks for that, by objc_retainBlock.
    if (objc::isBlock(object)) return objc::isStackBlock(object) ? object : _Block_copy(object);
    if (!objc::isPermanent(static_cast<objc::Object*>(object))) ++objc::referencesTo(object);
    return object;
}

void objc_release(void* object) {
    static auto const* const dealloc = objc::uniqueName("dealloc");
    if (object == nullptr) return;
    if (objc::isBlock(object)) return _Block_release(object);
    auto* const counted = static_cast<objc::Object*>(object);
    if (objc::isPermanent(counted)) return;
    {
        // A weak reference must not be followed between the count's end and its own.
        auto& all = objc::objects();
        std::scoped_lock const lock(all.mutex);
        if (--objc::referencesTo(object) > 0) return;
        // On its way out it may still be retained and released.
        objc::referencesTo(object) = objc::kGoing;
        if (auto const found = all.weak.find(object); found != all.weak.end()) {
            for (auto** const place : found->second) *place = nullptr;
            all.weak.erase(found);
        }
    }
    objc::methodOf(counted, dealloc)(counted, nullptr);
}

void* objc_storeStrong(void** place, void* object) {
    objc_retain(object);
    auto* const former = *place;
    *place = object;
    objc_release(former);
    return object;
}

void* objc_storeWeak(void** place, void* object) {
    auto& all = objc::objects();
    std::scoped_lock const lock(all.mutex);
    if (*place != nullptr) {
        if (auto const found = all.weak.find(*place); found != all.weak.end()) {
            found->second.erase(place);
        }
    }
    // What is on its way out cannot be referred to any more.
    bool const isGoing = object != nullptr && !objc::isBlock(object) &&
                         !objc::isPermanent(static_cast<objc::Object*>(object)) &&
                         objc::referencesTo(object) >= objc::kGoing / 2;
    *place = isGoing ? nullptr : object;
    if (*place != nullptr) all.weak[object].insert(place);
    return *place;
}

void* objc_initWeak(void** place, void* object) {
    *place = nullptr;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(void** place) {
    objc_storeWeak(place, nullptr);
}

void* objc_loadWeakRetained(void** place) {
    std::scoped_lock const lock(objc::objects().mutex);
    return objc_retain(*place);
}

void* objc_loadWeak(void** place) {
    return objc_autorelease(objc_loadWeakRetained(place));
}

void objc_copyWeak(void** to, void** from) {
    auto* const object = objc_loadWeakRetained(from);
    objc_initWeak(to, object);
    objc_release(object);
}

void objc_moveWeak(void** to, void** from) {
    objc_copyWeak(to, from);
    objc_destroyWeak(from);
}
}
