#pragma once

class QPixmap;

namespace trovel {

/// The application's own icon, `size` pixels square. Main thread only.
[[nodiscard]] QPixmap programIcon(int size);

} // namespace trovel
