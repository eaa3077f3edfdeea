#pragma once

#include <functional>

class QWidget;

namespace trovel {

/// Brings that window of this program in front of all others and gives it the keyboard.
using WindowActivator = std::function<void(QWidget& window)>;

} // namespace trovel
