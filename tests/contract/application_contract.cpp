#include "platform/application.h"
#include "platform/main_queue.h"
#include "tests/contract/contract_world.h"

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class ApplicationContract : public ContractTest, public ApplicationDelegate {
public:
    void applicationDidFinishLaunching() override { said.emplace_back("launched"); }
    void applicationWillTerminate() override { said.emplace_back("terminates"); }

protected:
    std::vector<std::string> said;
};

TEST_F(ApplicationContract, TellsItsDelegateOfTheStartAndTheEndOnce) {
    platform.application.setDelegate(this);
    platform.mainQueue.after(20ms, [&] {
        said.emplace_back("runs");
        platform.application.terminate();
        platform.application.terminate();
    });
    platform.application.run();
    platform.application.setDelegate(nullptr);
    EXPECT_THAT(said, ElementsAre("launched", "runs", "terminates"));
}

TEST_F(ApplicationContract, RunsWithoutADelegate) {
    bool ran = false;
    platform.mainQueue.after(20ms, [&] {
        ran = true;
        platform.application.terminate();
    });
    platform.application.run();
    EXPECT_TRUE(ran);
}

TEST_F(ApplicationContract, TerminatingOutsideRunDoesNothing) {
    platform.application.setDelegate(this);
    platform.application.terminate();
    platform.application.setDelegate(nullptr);
    EXPECT_TRUE(said.empty());
}

TEST_F(ApplicationContract, KnowsTheEnvironmentByExactName) {
    EXPECT_FALSE(platform.application.environmentHas("TROVEL_NO_SUCH_VARIABLE"));
    EXPECT_FALSE(platform.application.environmentHas(""));
}

} // namespace
} // namespace trovel
