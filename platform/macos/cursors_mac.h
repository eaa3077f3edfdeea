#pragma once

#include "platform/cursors.h"

namespace trovel {

/// AppKit's cursor stack, which shows while Trovel is the active application.
class CursorsMac final : public Cursors {
public:
    CursorsMac() = default;

    void pushCrosshair() override;
    void pop() override;
};

} // namespace trovel
