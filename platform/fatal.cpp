#include "platform/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace trovel {

void fatal(std::string_view what) {
    std::fprintf(stderr, "trovel: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

} // namespace trovel
