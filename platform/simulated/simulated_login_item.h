#pragma once

#include "platform/login_item.h"
#include "platform/simulated/faults.h"

namespace trovel {

/// The program's login item, not registered at first.
class SimulatedLoginItem final : public LoginItem {
public:
    SimulatedLoginItem(Journal& journal, Faults& faults) : journal_(journal), faults_(faults) {}
    ~SimulatedLoginItem() = default;

    [[nodiscard]] LoginItemStatus status() const override {
        journal_.record(effect::LoginItemAsked{});
        return status_;
    }
    [[nodiscard]] Result registerItem() override { return change(LoginItemStatus::enabled); }
    [[nodiscard]] Result unregisterItem() override {
        return change(LoginItemStatus::notRegistered);
    }

    void setStatus(LoginItemStatus status) { status_ = status; }

private:
    Result change(LoginItemStatus status) {
        if (faults_.strikes(Operation::changeLoginItem)) return std::unexpected("not permitted");
        status_ = status;
        journal_.record(effect::LoginItemChanged{status == LoginItemStatus::enabled});
        return {};
    }

    Journal& journal_;
    Faults& faults_;
    LoginItemStatus status_ = LoginItemStatus::notRegistered;
};

} // namespace trovel
