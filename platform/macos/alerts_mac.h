#pragma once

#include "platform/alerts.h"

namespace trovel {

/// NSAlert in a modal loop of its own.
class AlertsMac final : public Alerts {
public:
    AlertsMac() = default;

    void runModal(Alert const& alert) override;
};

} // namespace trovel
