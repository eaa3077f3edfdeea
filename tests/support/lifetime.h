#pragma once

#include <memory>
#include <utility>

namespace trovel {

/// An object whose memory goes with its last owner. That of `make_shared` stays for as long as
/// there is a weak reference, which hides a use after the end from the address sanitizer.
template <class Type, class... Arguments>
[[nodiscard]] std::shared_ptr<Type> newShared(Arguments&&... arguments) {
    return std::shared_ptr<Type>(new Type(std::forward<Arguments>(arguments)...));
}

} // namespace trovel
