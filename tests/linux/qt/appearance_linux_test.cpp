#include "platform/linux/qt/appearance_linux.h"

#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QPalette>

namespace trovel {
namespace {

TEST(AppearanceLinuxTest, IconAndPaletteStayTheSameWhileTheDesktopDoes) {
    MainQueueLinux queue;
    ApplicationLinux const application(queue);
    followAppearance({false, "Adwaita"});
    auto const icon = QApplication::windowIcon();
    EXPECT_EQ(icon.availableSizes(), QList<QSize>({{16, 16}, {32, 32}, {64, 64}}));
    auto const palette = QApplication::palette();
    followAppearance({false, "Adwaita"});
    EXPECT_EQ(QApplication::windowIcon().cacheKey(), icon.cacheKey());
    EXPECT_EQ(QApplication::palette().cacheKey(), palette.cacheKey());
}

} // namespace
} // namespace trovel
