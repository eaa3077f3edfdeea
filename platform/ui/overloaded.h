#pragma once

namespace trovel {

/// One function object out of several, such as std::visit takes.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace trovel
