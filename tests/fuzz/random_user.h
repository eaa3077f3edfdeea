#pragma once

#include "app/update_manager.h"
#include "setup_windows/window_slots.h"
#include "tests/fuzz/invariants.h"
#include "tests/fuzz/swarm.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trovel {

/// What became of one life of the program.
struct LifeReport {
    /// What was broken, with the last things that happened; nothing when all was well.
    std::optional<std::string> failure;
    /// The same for every run of the same seed and number of events.
    std::uint64_t digest = 0;
    int deliveries = 0;
    MainQueue::Duration virtualTime{};
};

/// A seeded user who drives the whole program on a desktop of its own through one life of it: first
/// so many events of chaos, then everything is healed and one capture must arrive in time, and then
/// the program quits and must leave nothing behind.
class RandomUser {
public:
    RandomUser(std::uint64_t seed, int events);
    ~RandomUser();

    [[nodiscard]] LifeReport live();

private:
    // Chaos.
    void actLater();
    void act();
    void perform(Deed deed);
    void pressHotkey(int repeats);
    void drag();
    void otherKey();
    void startProgram();
    void quitProgram();
    void switchProgram();
    void changeWindows();
    void changeGrant();
    void changeDisplays();
    void changeFault();
    void changePreference();
    void changeLatency();
    void recordHotkey();
    void chooseMenuRow();
    void clickInWindow();
    void closeWindow();
    void pressKeyWithModifiers();
    void note(std::string text);

    [[nodiscard]] Point anyPoint();
    /// A program that runs; null when there is none.
    [[nodiscard]] SimulatedProgram* anyProgram();
    [[nodiscard]] KeyCombination hotkey() const;

    // Healing.
    void heal();
    void closeWindows();
    void expectOneDelivery();
    void quit();

    Random random_;
    Swarm swarm_;
    int eventsLeft_;
    SimulatedDesktop desktop_;
    WindowSlots slots_;
    SharedUpdateManager updates_;
    std::shared_ptr<AppDelegate> delegate_;
    Invariants invariants_;
    std::uint32_t nextDisplay_ = 2;
};

} // namespace trovel
