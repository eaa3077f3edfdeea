#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace trovel {

/// What the simulated desktop does for the program and can be told to fail at.
enum class Operation : std::uint8_t {
    activateSelf,        ///< The desktop leaves another application in front.
    writePicture,        ///< The pasteboard refuses the picture and is empty.
    executeScript,       ///< The script ends in an error.
    installEventHandler, ///< No hot key handler is installed.
    registerHotKey,      ///< The system refuses the combination.
    listDisplays,        ///< The system's answer is an error.
    captureDisplay,      ///< The system's answer is an error.
    makeMouseEvent,      ///< No event is made.
    makeKeyEvent,        ///< No event is made.
    readFocusedWindow,   ///< The accessibility read fails.
    readWindows,         ///< The accessibility read fails.
    readPosition,        ///< The accessibility read fails.
    readSize,            ///< The accessibility read fails.
    writeText,           ///< The pasteboard refuses the text and is empty.
    encodePicture,       ///< The picture cannot be encoded.
    makeFolder,          ///< The folder is not made.
    writeFile,           ///< Half of the content is written.
    keepFile,            ///< A file is gone as soon as it has been written.
    listFolder,          ///< The folder cannot be listed.
    removeFile,          ///< The file stays.
    changeLoginItem,     ///< The system's answer is an error.
    startChild,          ///< No process is started.
};

/// Their names, in the order of the enumeration.
inline constexpr std::array<std::string_view, 22> kOperationNames{
    "activateSelf",    "writePicture",      "executeScript",  "installEventHandler",
    "registerHotKey",  "listDisplays",      "captureDisplay", "makeMouseEvent",
    "makeKeyEvent",    "readFocusedWindow", "readWindows",    "readPosition",
    "readSize",        "writeText",         "encodePicture",  "makeFolder",
    "writeFile",       "keepFile",          "listFolder",     "removeFile",
    "changeLoginItem", "startChild"};

} // namespace trovel
