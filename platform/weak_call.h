#pragma once

#include <memory>

namespace trovel {

/// A block that calls `method` on `object`, held by shared_ptr, if it is still alive then.
template <class Object, class Method>
[[nodiscard]] auto weakCall(Object& object, Method method) {
    return [weak = object.weak_from_this(), &object, method](auto const&... arguments) {
        if (auto const alive = weak.lock()) (object.*method)(arguments...);
    };
}

} // namespace trovel
