#include "tests/macos/run/runtime/runtime.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <set>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace objc {

namespace {

using Cache = std::unordered_map<char const*, Method>;

constexpr unsigned long kIsMetaclass = 2;

/// All that was loaded. Modules come in no particular order before main begins, so a class is set
/// up when it is first asked for.
struct Registry {
    std::recursive_mutex mutex;
    std::set<std::string, std::less<>> names;
    std::map<std::string, Class*, std::less<>> classes;
    std::set<Class const*> ready;
    std::vector<Category*> categories;
};

Registry& registry() {
    static auto* const all = new Registry;
    return *all;
}

Cache& cacheOf(Class& type) {
    if (type.cache == nullptr) type.cache = new Cache;
    return *static_cast<Cache*>(type.cache);
}

template <class Entry, class List>
std::span<Entry> entriesOf(List* list) {
    return {list->entries, list->count};
}

void makeNamesUnique(MethodList* list) {
    for (; list != nullptr; list = list->next) {
        for (auto& entry : entriesOf<MethodEntry>(list)) entry.name = uniqueName(entry.name);
    }
}

/// Moves the instance variables behind those of the superclass, whose size the compiler did not
/// know.
void layOut(Class& type) {
    constexpr long kAlignment = 16;
    if (type.superclass == &type || type.superclass == nullptr) {
        type.instanceSize = std::labs(type.instanceSize);
        return;
    }
    long const begin = (type.superclass->instanceSize + kAlignment - 1) / kAlignment * kAlignment;
    if (type.variables != nullptr) {
        for (std::size_t index = 0; auto& variable : entriesOf<Variable>(type.variables)) {
            variable.offset += static_cast<unsigned>(begin);
            *type.offsets[index++] = static_cast<int>(variable.offset);
        }
    }
    type.instanceSize = begin + std::labs(type.instanceSize);
}

void setUp(Class& type) {
    if (!registry().ready.insert(&type).second) return;
    Class& metaclass = *type.isa;
    if (type.superclass != nullptr) {
        auto const* const name = reinterpret_cast<char const*>(type.superclass);
        type.superclass = findClass(name);
        if (type.superclass == nullptr) {
            fatal(std::string("the superclass ") + name + " of " + type.name + " is missing");
        }
        metaclass.superclass = type.superclass->isa;
    } else {
        metaclass.superclass = &type;
    }
    metaclass.isa = &metaclass;
    makeNamesUnique(type.methods);
    makeNamesUnique(metaclass.methods);
    layOut(type);
}

void add(MethodList* methods, Class& type) {
    if (methods == nullptr) return;
    makeNamesUnique(methods);
    // What a category has comes before the class's own.
    for (auto& entry : entriesOf<MethodEntry>(methods)) cacheOf(type)[entry.name] = entry.method;
}

void addCategories() {
    for (auto* const category : std::exchange(registry().categories, {})) {
        // The compiler puts protocols into a category of a class that nobody has.
        auto* const type = findClass(category->className);
        if (type == nullptr) continue;
        add(category->instanceMethods, *type);
        add(category->classMethods, *type->isa);
    }
}

void* answerNothing(void*, Selector const*) {
    return nullptr;
}

Method lookUp(Class* type, Selector const* selector) {
    if (auto const method = findMethod(type, selector->name)) return method;
    fatal((isMetaclass(*type) ? "+[" : "-[") + std::string(type->name) + " " + selector->name +
          "] is not implemented");
}

} // namespace

void fatal(std::string const& reason) {
    std::fprintf(stderr, "Objective-C runtime: %s\n", reason.c_str());
    std::abort();
}

char const* uniqueName(char const* name) {
    std::scoped_lock const lock(registry().mutex);
    return registry().names.emplace(name).first->c_str();
}

Class* findClass(char const* name) {
    std::scoped_lock const lock(registry().mutex);
    auto const found = registry().classes.find(name);
    if (found == registry().classes.end()) return nullptr;
    setUp(*found->second);
    return found->second;
}

bool isMetaclass(Class const& type) {
    return (type.flags & kIsMetaclass) != 0;
}

Method ownMethod(Class const& type, char const* uniqueName) {
    for (auto* list = type.methods; list != nullptr; list = list->next) {
        for (auto const& entry : entriesOf<MethodEntry>(list)) {
            if (entry.name == uniqueName) return entry.method;
        }
    }
    return nullptr;
}

Method findMethod(Class* type, char const* uniqueName) {
    std::scoped_lock const lock(registry().mutex);
    addCategories();
    // A metaclass has the name of its class.
    if (findClass(type->name) == nullptr) fatal(std::string("no class ") + type->name);
    for (auto* each = type; each != nullptr; each = each->superclass) {
        auto const [entry, isNew] = cacheOf(*each).try_emplace(uniqueName, nullptr);
        if (isNew) entry->second = ownMethod(*each, uniqueName);
        if (entry->second != nullptr) return entry->second;
    }
    return nullptr;
}

void* variableOf(Object* object, std::string const& name) {
    for (auto* type = object->isa; type != nullptr; type = type->superclass) {
        if (type->variables == nullptr) continue;
        for (auto const& variable : entriesOf<Variable>(type->variables)) {
            if (variable.name == name) return reinterpret_cast<char*>(object) + variable.offset;
        }
    }
    fatal("no variable is called " + name);
}

Method methodOf(Object* object, char const* uniqueName) {
    Selector const selector{uniqueName, nullptr};
    return lookUp(object->isa, &selector);
}

} // namespace objc

extern "C" {

void __objc_exec_class(objc::Module* module, ...) {
    auto& all = objc::registry();
    std::scoped_lock const lock(all.mutex);
    auto& symbols = *module->symbols;
    for (auto* selector = symbols.selectors; selector != nullptr && selector->name != nullptr;
         ++selector) {
        selector->name = objc::uniqueName(selector->name);
    }
    for (int index = 0; index < symbols.classCount; ++index) {
        auto* const type = static_cast<objc::Class*>(symbols.definitions[index]);
        if (!all.classes.emplace(type->name, type).second) {
            objc::fatal(std::string("two classes are called ") + type->name);
        }
    }
    for (int index = 0; index < symbols.categoryCount; ++index) {
        all.categories.push_back(
            static_cast<objc::Category*>(symbols.definitions[symbols.classCount + index]));
    }
}

// A message to nil answers zero. Where that is no integer, the compiler sees to it itself.
objc::Method objc_msg_lookup(objc::Object* receiver, objc::Selector const* selector) {
    return receiver != nullptr ? objc::lookUp(receiver->isa, selector) : objc::answerNothing;
}

objc::Method objc_msg_lookup_stret(objc::Object* receiver, objc::Selector const* selector) {
    return objc_msg_lookup(receiver, selector);
}

objc::Method objc_msg_lookup_super(objc::Super* super, objc::Selector const* selector) {
    return super->self != nullptr ? objc::lookUp(super->superclass, selector) : objc::answerNothing;
}

objc::Method objc_msg_lookup_super_stret(objc::Super* super, objc::Selector const* selector) {
    return objc_msg_lookup_super(super, selector);
}

objc::Class* objc_lookup_class(char const* name) {
    return objc::findClass(name);
}

objc::Class* objc_get_class(char const* name) {
    auto* const type = objc::findClass(name);
    if (type == nullptr) objc::fatal(std::string("no class ") + name);
    return type;
}

void objc_enumerationMutation(objc::Object*) {
    objc::fatal("a collection was changed while it was enumerated");
}

int __gxx_personality_v0(int version, int actions, std::uint64_t kind, void* exception,
                         void* context);

// C++ exceptions only.
int __gnu_objc_personality_v0(int version, int actions, std::uint64_t kind, void* exception,
                              void* context) {
    return __gxx_personality_v0(version, actions, kind, exception, context);
}
}
