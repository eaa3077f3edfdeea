#include "tests/macos/run/runtime/runtime.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

// The layouts and flags of Clang's "Block Implementation Specification".

namespace objc {

namespace {

enum BlockFlag : int {
    kCountMask = 0xfffe, // in steps of two
    kIsOnHeap = 1 << 24,
    kHasHelpers = 1 << 25,
    kIsGlobal = 1 << 28
};

enum CaptureKind : int { kIsVariable = 8, kIsWeak = 16, kIsFromVariable = 128 };

struct Descriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* to, void const* from);
    void (*dispose)(void const* block);
};

struct Block {
    void const* isa;
    std::atomic<int> flags;
    int reserved;
    void* invoke;
    Descriptor* descriptor;
};

/// A variable that is marked __block.
struct SharedVariable {
    void* isa;
    SharedVariable* forwarding;
    std::atomic<int> flags;
    int size;
    void (*keep)(SharedVariable* to, SharedVariable* from);
    void (*destroy)(SharedVariable* variable);
};

/// A copy with one reference, byte for byte; what it captured is yet to be copied.
template <class T>
T* copyToHeap(T const* from, std::size_t size) {
    auto* const memory = std::malloc(size);
    std::memcpy(memory, static_cast<void const*>(from), size);
    auto* const copy = static_cast<T*>(memory);
    copy->flags = (from->flags & ~kCountMask) | kIsOnHeap | 2;
    return copy;
}

SharedVariable* shareVariable(SharedVariable* variable) {
    variable = variable->forwarding;
    if ((variable->flags & kIsOnHeap) != 0) {
        variable->flags += 2;
        return variable;
    }
    auto* const copy = copyToHeap(variable, static_cast<std::size_t>(variable->size));
    // The frame that declared it holds it too, until it is left.
    copy->flags += 2;
    copy->forwarding = copy;
    variable->forwarding = copy;
    if ((copy->flags & kHasHelpers) != 0) copy->keep(copy, variable);
    return copy;
}

void releaseVariable(SharedVariable* variable) {
    variable = variable->forwarding;
    if ((variable->flags & kIsOnHeap) == 0) return;
    if (((variable->flags -= 2) & kCountMask) != 0) return;
    if ((variable->flags & kHasHelpers) != 0) variable->destroy(variable);
    std::free(variable);
}

} // namespace

bool isStackBlock(void const* object) {
    return *static_cast<void const* const*>(object) == _NSConcreteStackBlock;
}

bool isBlock(void const* object) {
    auto const* const isa = *static_cast<void const* const*>(object);
    return isa == _NSConcreteStackBlock || isa == _NSConcreteMallocBlock ||
           isa == _NSConcreteGlobalBlock;
}

} // namespace objc

extern "C" {

// Only their addresses count.
void* const _NSConcreteStackBlock[32]{};
void* const _NSConcreteGlobalBlock[32]{};
void* const _NSConcreteMallocBlock[32]{};

void* _Block_copy(void const* block) {
    auto* const original = static_cast<objc::Block*>(const_cast<void*>(block));
    if (original == nullptr || (original->flags & objc::kIsGlobal) != 0) return original;
    if ((original->flags & objc::kIsOnHeap) != 0) {
        original->flags += 2;
        return original;
    }
    auto* const copy = objc::copyToHeap(original, original->descriptor->size);
    copy->isa = _NSConcreteMallocBlock;
    if ((copy->flags & objc::kHasHelpers) != 0) copy->descriptor->copy(copy, original);
    objc::countLive("block", 1);
    return copy;
}

void _Block_release(void const* block) {
    auto* const released = static_cast<objc::Block*>(const_cast<void*>(block));
    if (released == nullptr || (released->flags & objc::kIsOnHeap) == 0) return;
    if (((released->flags -= 2) & objc::kCountMask) != 0) return;
    if ((released->flags & objc::kHasHelpers) != 0) released->descriptor->dispose(released);
    objc::countLive("block", -1);
    std::free(released);
}

void _Block_object_assign(void* place, void const* captured, int kind) {
    auto* const object = const_cast<void*>(captured);
    auto** const to = static_cast<void**>(place);
    if ((kind & objc::kIsVariable) != 0) {
        *to = objc::shareVariable(static_cast<objc::SharedVariable*>(object));
    } else {
        *to = (kind & objc::kIsFromVariable) != 0 ? object : objc_retain(object);
    }
}

void _Block_object_dispose(void const* captured, int kind) {
    auto* const object = const_cast<void*>(captured);
    if ((kind & objc::kIsVariable) != 0) {
        objc::releaseVariable(static_cast<objc::SharedVariable*>(object));
    } else if ((kind & objc::kIsFromVariable) == 0) {
        objc_release(object);
    }
}

void* objc_retainBlock(void* block) {
    return _Block_copy(block);
}
}
