#pragma once

namespace trovel {

/// Calls into the program from a frame of the system's, which no C++ exception may cross.
template <class Call>
decltype(auto) enter(Call const& call) noexcept {
    return call();
}

} // namespace trovel
