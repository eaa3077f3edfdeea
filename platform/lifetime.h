#pragma once

#include <memory>
#include <utility>

namespace trovel {

/// Ties blocks that run later to something that may be over by then: they do nothing once this is
/// gone, whoever still holds them. Main thread only.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(Lifetime const&) = delete;
    Lifetime& operator=(Lifetime const&) = delete;
    ~Lifetime() = default;

    /// A block that runs `block` as long as this lasts. `block` may end it.
    template <class Block>
    [[nodiscard]] auto whileItLasts(Block block) const {
        return [mark = std::weak_ptr(mark_), block = std::move(block)] {
            if (!mark.expired()) block();
        };
    }

private:
    struct Mark {};

    std::shared_ptr<Mark const> mark_ = std::make_shared<Mark>();
};

} // namespace trovel
