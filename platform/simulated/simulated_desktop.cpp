#include "platform/simulated/simulated_desktop.h"

namespace trovel {

SimulatedDesktop::SimulatedDesktop(std::uint64_t seed)
    : journal(queue), faults(journal, seed), permissions(journal), preferences(journal),
      pasteboard(journal, faults), worker(queue), cursors(journal), monitors(journal),
      hotkeys(journal, faults), windows(queue, journal), workspace(queue, journal),
      scripts(workspace, journal, faults), accessibility(queue, workspace, permissions, faults),
      application(queue, journal, faults, workspace), alerts(queue, journal, application),
      statusBar(journal), animator(journal), openPanels(journal), wallClock(queue),
      files(journal, faults, wallClock), encoder(faults), process(journal, faults),
      loginItem(journal, faults), updater(journal),
      capturer({journal, faults, worker, permissions, screens, windows}),
      input({journal, queue, screens, workspace, application, pasteboard, hotkeys, monitors,
             windows, alerts, capturer}),
      events({journal, faults, queue, permissions, screens, input}), user(input, queue) {
    screens.attach({1, {0, 0, 1440, 900}, 2, true});
    workspace.onFrontmostChanged = [this] {
        windows.setActive(application.selfActivation() == SelfActivation::changesNothing ||
                          workspace.frontmost() == kTrovelProcess);
    };
    workspace.onFrontmostChanged();
}

Platform SimulatedDesktop::platform() {
    return {application,   queue,   worker,      preferences, pasteboard, workspace, scripts,
            accessibility, events,  permissions, screens,     capturer,   hotkeys,   windows,
            monitors,      cursors, alerts,      statusBar,   animator,   icons,     openPanels,
            files,         encoder, wallClock,   bundle,      process,    loginItem, updater};
}

} // namespace trovel
