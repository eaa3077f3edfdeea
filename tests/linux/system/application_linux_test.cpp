#include "platform/linux/system/application_linux.h"

#include "platform/linux/qt/alerts_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"
#include "tests/linux/support/scoped_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class ApplicationLinuxTest : public testing::Test, private ApplicationDelegate {
protected:
    ApplicationLinuxTest() { application_.setDelegate(this); }

    /// Runs the application and, when it has launched, `onLaunch`.
    void run(std::function<void()> onLaunch) {
        onLaunch_ = std::move(onLaunch);
        application_.run();
    }

    void showAlert() {
        AlertsLinux alerts([] {}, [this](QWidget& window) { activated_ = window.winId(); });
        alerts.runModal({"Trovel", "A sentence.", AlertStyle::informational, {"OK"}});
        events_.emplace_back("alert closed");
    }

    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    MainQueueLinux queue_;
    ApplicationLinux application_{queue_};
    std::vector<std::string> events_;
    WId activated_ = 0;

private:
    void applicationDidFinishLaunching() override {
        events_.emplace_back("launched");
        onLaunch_();
    }
    void applicationWillTerminate() override { events_.emplace_back("will terminate"); }

    std::function<void()> onLaunch_;
};

TEST_F(ApplicationLinuxTest, TellsItsDelegateOfTheBeginningAndTheEnd) {
    run([this] {
        queue_.post([this] {
            application_.terminate();
            application_.terminate();
        });
    });
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate"));
}

TEST_F(ApplicationLinuxTest, TerminatingOutsideOfItsRunDoesNothing) {
    application_.terminate();
    EXPECT_THAT(events_, ElementsAre());
    run([this] { application_.terminate(); });
    application_.terminate();
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate"));
}

TEST_F(ApplicationLinuxTest, RunsWithoutADelegate) {
    application_.setDelegate(nullptr);
    queue_.after(1ms, [this] { application_.terminate(); });
    application_.run();
    EXPECT_THAT(events_, ElementsAre());
}

TEST_F(ApplicationLinuxTest, NoBlockRunsOnceItTerminates) {
    run([this] {
        queue_.post([this] { application_.terminate(); });
        queue_.post([this] { events_.emplace_back("too late"); });
    });
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate"));
}

TEST_F(ApplicationLinuxTest, ASignalThatAsksForTheEndTerminatesIt) {
    run([] { raise(SIGTERM); });
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate"));
}

TEST_F(ApplicationLinuxTest, AnInterruptTerminatesIt) {
    run([] { raise(SIGINT); });
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate"));
}

TEST_F(ApplicationLinuxTest, ASignalBeforeTheLoopIsNotLost) {
    raise(SIGTERM);
    run([] {});
    EXPECT_EQ(events_.back(), "will terminate");
}

TEST_F(ApplicationLinuxTest, ASignalEndsAnAlertToo) {
    run([this] {
        queue_.after(50ms, [] { raise(SIGTERM); });
        showAlert();
    });
    EXPECT_THAT(events_, ElementsAre("launched", "will terminate", "alert closed"));
}

TEST_F(ApplicationLinuxTest, TheQueueGoesOnWhileAnAlertIsUp) {
    run([this] {
        queue_.post([this] { events_.emplace_back("posted"); });
        queue_.after(20ms, [this] {
            events_.emplace_back("delayed");
            QApplication::activeModalWidget()->close();
        });
        showAlert();
        application_.terminate();
    });
    EXPECT_THAT(events_,
                ElementsAre("launched", "posted", "delayed", "alert closed", "will terminate"));
}

TEST_F(ApplicationLinuxTest, AnAlertThatIsOnTheScreenAsksForTheKeyboard) {
    run([this] {
        queue_.after(500ms, [this] { application_.terminate(); });
        showAlert();
    });
    EXPECT_NE(activated_, 0U);
}

TEST_F(ApplicationLinuxTest, AnAlertIsLargeEnoughForAllOfItsLines) {
    int labels = 0;
    run([this, &labels] {
        queue_.after(20ms, [this, &labels] {
            for (auto const* label : QApplication::activeModalWidget()->findChildren<QLabel*>()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()));
                ++labels;
            }
            application_.terminate();
        });
        AlertsLinux alerts([] {}, [](QWidget&) {});
        std::string const words(300, 'w');
        alerts.runModal({"A title " + words,
                         "One\n\nTwo " + words + "\n\nThree",
                         AlertStyle::informational,
                         {"OK"}});
    });
    EXPECT_EQ(labels, 2);
}

TEST_F(ApplicationLinuxTest, AnAlertShowsItsTextsAsTheyAre) {
    std::vector<std::string> texts;
    run([this, &texts] {
        queue_.post([this, &texts] {
            for (auto const* label : QApplication::activeModalWidget()->findChildren<QLabel*>()) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText);
                texts.push_back(label->text().toStdString());
            }
            application_.terminate();
        });
        AlertsLinux alerts([] {}, [](QWidget&) {});
        alerts.runModal({"Trovel", "<b>x</b> is not running.", AlertStyle::informational, {"OK"}});
    });
    EXPECT_THAT(texts, ElementsAre("Trovel", "<b>x</b> is not running."));
}

TEST_F(ApplicationLinuxTest, LooksAtTheEnvironmentAfresh) {
    EXPECT_FALSE(application_.environmentHas("TROVEL_TEST_VARIABLE"));
    ScopedEnvironment const variable("TROVEL_TEST_VARIABLE", "");
    EXPECT_TRUE(application_.environmentHas("TROVEL_TEST_VARIABLE"));
    EXPECT_FALSE(application_.environmentHas("TROVEL_TEST_VARIABL"));
}

TEST_F(ApplicationLinuxTest, LeavesTheEnvironmentToTheProgramsThatItStarts) {
    for (auto const* const name : {"QT_QPA_PLATFORM", "QT_NO_GLIB", "QT_IM_MODULE"}) {
        EXPECT_FALSE(application_.environmentHas(name)) << name;
    }
}

TEST(ApplicationLinuxPlatformTest, IsX11WhateverTheSessionAsksFor) {
    ScopedEnvironment const platform("QT_QPA_PLATFORM", "wayland");
    MainQueueLinux queue;
    ApplicationLinux const application(queue);
    EXPECT_EQ(QApplication::platformName(), "xcb");
    EXPECT_TRUE(application.environmentHas("QT_QPA_PLATFORM"));
}

TEST(AlertTextTest, OrdinaryTextStaysAsItIs) {
    std::string const text =
        "Could not bring the target app to front. The screenshot is on your clipboard — paste it "
        "manually.";
    EXPECT_EQ(alertText(text), text);
}

TEST(AlertTextTest, AMegabyteIsCutAndCanBeBroken) {
    auto const text = alertText(std::string(1'000'000, 'x'));
    EXPECT_LT(text.size(), 1000U);
    EXPECT_TRUE(text.ends_with("…"));
    EXPECT_NE(text.find("\u200b"), std::string::npos);
}

TEST(AlertTextTest, CharactersThatSteerTheTextAreSpaces) {
    EXPECT_EQ(alertText("a\nb\tc\x1b[d"), "a b c [d");
    EXPECT_EQ(alertText("a\u202eb\u2066c"), "a b c");
}

TEST(AlertTextTest, CharactersStayWhole) {
    std::string balloons;
    for (int i = 0; i < 400; ++i) balloons += "🎈";
    auto const text = alertText(balloons);
    EXPECT_EQ(text.find("\uFFFD"), std::string::npos);
    EXPECT_TRUE(alertText("\xff\xfe broken").ends_with(" broken"));
}

} // namespace
} // namespace trovel
