#include "tests/macos/run/fakes/foundation.h"
#include "tests/macos/run/runtime/runtime.h"

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

namespace {

objc::Object* bare(id _Nullable object) {
    return (__bridge objc::Object*)object;
}

bool isKindOf(objc::Class const* type, objc::Class const* other) {
    for (; type != nullptr; type = type->superclass) {
        if (type == other) return true;
    }
    return false;
}

objc::Selector const* selectorOf(SEL _Nonnull selector) {
    return reinterpret_cast<objc::Selector const*>(selector);
}

} // namespace

@implementation NSObject

+ (instancetype)alloc {
    return (__bridge_transfer id)objc::allocate((__bridge objc::Class*)self);
}

- (instancetype)init {
    return self;
}

- (void)dealloc {
    objc::dispose((__bridge objc::Object*)self);
}

+ (Class)class {
    return self;
}

- (Class)class {
    return (__bridge Class) static_cast<void*>(bare(self)->isa);
}

- (BOOL)isKindOfClass:(Class)aClass {
    return isKindOf(bare(self)->isa, (__bridge objc::Class*)aClass);
}

- (BOOL)isEqual:(id)object {
    return object == self;
}

- (BOOL)respondsToSelector:(SEL)selector {
    return selector != nullptr &&
           objc::findMethod(bare(self)->isa, selectorOf(selector)->name) != nullptr;
}

- (NSString*)description {
    return fakes::toNative(bare(self)->isa->name);
}

- (id)copy {
    return [self copyWithZone:nullptr];
}

// What the fakes hand out never changes, so a copy is the object itself.
- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end

@implementation NSCoder
@end

namespace fakes {

void require(bool isSo, char const* what) {
    if (!isSo) objc::fatal(std::string("an exception would have been raised: ") + what);
}

void send(id receiver, SEL action, id argument) {
    if (receiver == nil) return;
    using Action = void (*)(void*, SEL, void*);
    auto const method = objc::methodOf(bare(receiver), selectorOf(action)->name);
    reinterpret_cast<Action>(method)((__bridge void*)receiver, action, (__bridge void*)argument);
}

} // namespace fakes
