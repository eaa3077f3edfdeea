#pragma once

#include <cstddef>

// What Clang emits for -fobjc-runtime=objfw, and what the code that it emits calls: the layouts
// follow clang/lib/CodeGen/CGObjCGNU.cpp and ObjFW's public runtime header.

namespace objc {

struct Class;

struct Selector {
    char const* name; ///< made unique when its module is loaded
    char const* types;
};

/// Every method is called through a cast to its own type.
using Method = void* (*)(void* self, Selector const* selector);

struct MethodEntry {
    char const* name;
    char const* types;
    Method method;
};

struct MethodList {
    MethodList* next;
    unsigned int count;
    MethodEntry entries[1];
};

struct Variable {
    char const* name;
    char const* type;
    unsigned int offset; ///< until the class is set up, from where its superclass ends
};

struct VariableList {
    unsigned int count;
    Variable entries[1];
};

struct Class {
    Class* isa;
    Class* superclass; ///< until the class is set up, the name of its superclass
    char const* name;
    unsigned long version;
    unsigned long flags;
    long instanceSize; ///< until the class is set up, its own part of it with a minus sign
    VariableList* variables;
    MethodList* methods;
    void* cache;
    Class** subclasses;
    void* collector;
    void* protocols;
    void* extra;
    long abi;
    int** offsets; ///< where the code of the class looks up its instance variables
    void* properties;
    long strongPointers;
    long weakPointers;
};

struct Category {
    char const* name;
    char const* className;
    MethodList* instanceMethods;
    MethodList* classMethods;
    void* protocols;
};

struct SymbolTable {
    unsigned long unused;
    Selector* selectors; ///< the last one has no name
    unsigned short classCount;
    unsigned short categoryCount;
    void* definitions[1];
};

struct Module {
    unsigned long version;
    unsigned long size;
    char const* name;
    SymbolTable* symbols;
};

struct Object {
    Class* isa;
};

/// The receiver of a message to super.
struct Super {
    Object* self;
    Class* superclass;
};

} // namespace objc
