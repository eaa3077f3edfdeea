#include "platform/linux/system/updater_linux.h"

#include "platform/alerts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trovel {
namespace {

class NotedAlerts final : public Alerts {
public:
    ~NotedAlerts() = default;
    void runModal(Alert const& alert) override { shown.push_back(alert); }
    std::vector<Alert> shown;
};

TEST(UpdaterLinuxTest, ItSaysOnRequestHowThisCopyIsUpdated) {
    NotedAlerts alerts;
    UpdaterLinux updater(alerts, "/usr/bin/trovel");
    auto const controller = updater.makeStandardController();
    EXPECT_TRUE(alerts.shown.empty());
    controller->checkForUpdates(nullptr);
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_EQ(alerts.shown[0].informativeText, updateAdvice("/usr/bin/trovel"));
}

TEST(UpdaterLinuxTest, APackagesCopyIsThePackageManagersBusiness) {
    auto const packaged = updateAdvice("/usr/bin/trovel");
    EXPECT_NE(packaged.find("package manager"), std::string::npos);
    EXPECT_EQ(packaged.find("https://"), std::string::npos);
    for (auto const* program : {"/usr/local/bin/trovel", "/opt/trovel/bin/trovel",
                                "/home/ann/Trovel.AppImage", "/usrlocal/trovel"}) {
        auto const advice = updateAdvice(program);
        EXPECT_EQ(advice.find("package manager"), std::string::npos) << program;
        EXPECT_NE(advice.find("https://"), std::string::npos) << program;
    }
}

} // namespace
} // namespace trovel
