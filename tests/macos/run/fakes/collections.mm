#include "tests/macos/run/fakes/foundation.h"

@interface NSArray () {
@public
    std::vector<id> items_;
}
@end

@implementation NSArray

+ (instancetype)array {
    return [[self alloc] init];
}

+ (instancetype)arrayWithObjects:(id const*)objects count:(NSUInteger)count {
    NSArray* const array = [[self alloc] init];
    for (NSUInteger index = 0; index < count; ++index) {
        fakes::require(objects[index] != nil, "nil in an array");
        array->items_.push_back(objects[index]);
    }
    return array;
}

- (NSUInteger)count {
    return items_.size();
}

- (id)objectAtIndex:(NSUInteger)index {
    fakes::require(index < items_.size(), "an index beyond an array");
    return items_[index];
}

- (BOOL)isEqualToArray:(NSArray*)other {
    if (other == nil || other->items_.size() != items_.size()) return NO;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (![static_cast<NSObject*>(items_[index]) isEqual:other->items_[index]]) return NO;
    }
    return YES;
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained*)buffer
                                    count:(NSUInteger)length {
    state->itemsPtr = buffer;
    // The loop looks whether this changes, and ends the process if it does.
    state->mutationsPtr = &state->extra[0];
    NSUInteger count = 0;
    while (count < length && state->state < items_.size()) {
        buffer[count++] = items_[state->state++];
    }
    return count;
}

- (id)copyWithZone:(NSZone*)zone {
    NSArray* const copy = [[NSArray alloc] init];
    copy->items_ = items_;
    return copy;
}

@end

@implementation NSMutableArray

- (void)addObject:(id)object {
    fakes::require(object != nil, "nil in an array");
    items_.push_back(object);
}

@end

@implementation NSDictionary {
    std::vector<std::pair<id, id>> items_;
}

+ (instancetype)dictionaryWithObjects:(id const*)objects
                              forKeys:(id const*)keys
                                count:(NSUInteger)count {
    NSDictionary* const dictionary = [[self alloc] init];
    for (NSUInteger index = 0; index < count; ++index) {
        fakes::require(keys[index] != nil && objects[index] != nil, "nil in a dictionary");
        dictionary->items_.emplace_back(keys[index], objects[index]);
    }
    return dictionary;
}

- (id)objectForKeyedSubscript:(id)key {
    for (auto const& [each, value] : items_) {
        if ([static_cast<NSObject*>(each) isEqual:key]) return value;
    }
    return nil;
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained*)buffer
                                    count:(NSUInteger)length {
    fakes::require(false, "nobody enumerates a dictionary yet");
    return 0;
}

@end
