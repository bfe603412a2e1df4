// The session as the viewer sees it: asked for in the TV's menu, with the plug-in's answers and
// notifications on the TV's screen.
#include <gtest/gtest.h>

#include "JsonText.h"
#include "SessionTestSupport.h"

namespace norvane {
namespace {

class SessionScreen : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        // Slow enough that a notice (6 simulated seconds) is still up when the test looks,
        // fast enough that the 3-second polls take a third of a second.
        platform.tv().setTimeScale(10);
    }

    // The viewer's own remote control.
    void press(const std::vector<std::string>& keys) {
        for (const std::string& key : keys) {
            platform.tv().pressKey(key);
        }
        platform.tv().waitUntilDelivered();
    }

    Json::Value screen() {
        Json::Value described;
        simjson::ParseError error;
        EXPECT_TRUE(simjson::parse(platform.tv().describeScreen(), described, error));
        return described;
    }
};

TEST_F(SessionScreen, TheCodeAskedForInTheMenuAppearsAndAConnectIsAnnounced) {
    // Menu, up to Remote Support (the last item), into it, switch it on, ask for a code.
    press({"KEY_MENU", "KEY_CURSOR_UP", "KEY_OK", "KEY_CURSOR_RIGHT"});
    EXPECT_TRUE(eventually([] { return !zelsim::takeMessages().empty(); })) << "polling";
    press({"KEY_CURSOR_DOWN", "KEY_OK"});
    Json::Value dialog = screen()["dialog"];
    EXPECT_EQ(dialog["title"], "Remote Support");
    EXPECT_EQ(dialog["code"], "123456");

    setSession(1, 5);
    ASSERT_TRUE(eventually([this] { return screen().isMember("badge"); }));
    const Json::Value shown = screen();
    EXPECT_EQ(shown["notice"], "A support engineer is now connected to your TV.");
    EXPECT_FALSE(shown.isMember("dialog"));

    setSession(1, 6);
    ASSERT_TRUE(eventually([this] { return !screen().isMember("badge"); }));
    EXPECT_EQ(screen()["notice"], "The remote support session has ended.");
}

TEST_F(SessionScreen, ANetworkFailureIsExplained) {
    platform.tv().set("marlo.sl2.i32.local.network.available", 0);
    press({"KEY_MENU", "KEY_CURSOR_UP", "KEY_OK", "KEY_CURSOR_RIGHT", "KEY_CURSOR_DOWN", "KEY_OK"});
    EXPECT_EQ(screen()["dialog"]["text"][0],
              "The TV cannot reach the support service. Check the network connection and try "
              "again.");
}

}  // namespace
}  // namespace norvane
