#pragma once

#include <optional>
#include <string>

namespace trovel {

/// An open panel for one file, as a value.
struct OpenPanel {
    std::string title;
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
    /// Only applications can be chosen.
    bool applicationsOnly = false;
    /// An absolute path; a desktop that has no such folder starts where its applications are.
    std::string directory;

    friend bool operator==(OpenPanel const&, OpenPanel const&) = default;
};

/// What a bundle at a path says of itself.
struct ApplicationBundle {
    std::optional<std::string> bundleIdentifier;
    /// The value of "CFBundleName", when it is a string.
    std::optional<std::string> bundleName;

    friend bool operator==(ApplicationBundle const&, ApplicationBundle const&) = default;
};

/// Shows open panels and reads what was chosen in them. Main thread only.
class OpenPanels {
public:
    OpenPanels(OpenPanels const&) = delete;
    OpenPanels& operator=(OpenPanels const&) = delete;

    /// Runs the panel modally. The path of the chosen file; none when it was cancelled. The main
    /// queue, timers and hot keys go on meanwhile.
    [[nodiscard]] virtual std::optional<std::string> runModal(OpenPanel const& panel) = 0;

    /// The bundle at `path`; none when there is no readable one.
    [[nodiscard]] virtual std::optional<ApplicationBundle>
    bundleAtPath(std::string const& path) const = 0;

protected:
    OpenPanels() = default;
    ~OpenPanels() = default;
};

} // namespace trovel
