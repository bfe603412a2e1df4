// The loop remote support serves, through the loaded plug-in: the engineer presses the viewer's
// buttons, the TV reacts, and the next frames show it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "JsonText.h"
#include "support/SimulatedPlatform.h"
#include "zel/PluginApi.h"
#include "zel/sv/CommandBase.h"

namespace {

constexpr char kRemoteButton[] = "FFFFFF_LIVE_SUPPORT_TV_REMOTE_BUTTON";
constexpr char kPictureTool[] = "7A31B2_LIVE_SUPPORT_PICTURE_DIAGNOSE_TOOL";
constexpr char kPictureMode[] = "marlo.sl2.i32.video.enum.picture.adjustment";

// The plug-in loaded and started as the agent does it, on the default TV.
class ScreenLoop : public testing::Test {
protected:
    void SetUp() override {
        // Real speed: nothing on screen runs out while the test looks.
        platform_.tv().setTimeScale(1);
        platform_.tv().loadDefaultProfile();
        library_ = dlopen(NORVANE_PLUGIN_PATH, RTLD_NOW);
        ASSERT_NE(library_, nullptr) << dlerror();
        fill_ = resolve<ZelPlugin::FillVideoBufferFn>("fillVideoBufferExt");
        width_ = resolve<ZelPlugin::GetVideoDimensionFn>("getVideoWidthExt");
        height_ = resolve<ZelPlugin::GetVideoDimensionFn>("getVideoHeightExt");
        resolve<ZelPlugin::InitializeFn>("initialize")();
        for (Zel::Sv::CommandBase* command :
             resolve<ZelPlugin::CreateCommandsFn>("createCommandsExt")()) {
            commands_.emplace_back(command);
        }
    }

    template <typename Function>
    Function resolve(const char* name) {
        void* symbol = dlsym(library_, name);
        EXPECT_NE(symbol, nullptr) << name;
        return reinterpret_cast<Function>(symbol);
    }

    Zel::Sv::CommandBase& command(const std::string& id) {
        for (const auto& command : commands_) {
            if (command->getId() == id) {
                return *command;
            }
        }
        throw std::runtime_error("no command " + id);
    }

    ZelJson::Value execute(const std::string& id, const std::string& input) {
        std::unique_ptr<Zel::Sv::CommandHandler> handler(command(id).create());
        ZelJson::Value document;
        simjson::ParseError error;
        EXPECT_TRUE(simjson::parse(input, document, error)) << error.message;
        ZelJson::Value output(ZelJson::objectValue);
        EXPECT_EQ(handler->executeHandler(document, output), 0);
        return output;
    }

    ZelJson::Value get(const std::string& id) {
        std::unique_ptr<Zel::Sv::CommandHandler> handler(command(id).create());
        ZelJson::Value reply(ZelJson::objectValue);
        EXPECT_EQ(handler->getHandler(ZelJson::Value(ZelJson::objectValue), reply), 0);
        return reply;
    }

    // A frame as the agent gets it (RGBA). Each call returns what the call before asked the TV
    // to capture, so the second of two calls shows the screen as it was at the first.
    std::vector<unsigned char> frame() {
        std::vector<unsigned char> rgba(static_cast<size_t>(width_()) * height_() * 4);
        fill_(rgba.data(), static_cast<uint32_t>(rgba.size()));
        EXPECT_EQ(fill_(rgba.data(), static_cast<uint32_t>(rgba.size())), 0);
        return rgba;
    }

    // Whether the two frames differ inside the rectangle (a 1920-pixel-wide frame).
    static bool differIn(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b,
                         int left, int top, int width, int height) {
        for (int y = top; y < top + height; ++y) {
            const size_t start = (static_cast<size_t>(y) * 1920 + left) * 4;
            if (!std::equal(a.begin() + start, a.begin() + start + width * 4, b.begin() + start)) {
                return true;
            }
        }
        return false;
    }

    testing_support::SimulatedPlatform platform_;
    void* library_ = nullptr;
    ZelPlugin::FillVideoBufferFn fill_ = nullptr;
    ZelPlugin::GetVideoDimensionFn width_ = nullptr;
    ZelPlugin::GetVideoDimensionFn height_ = nullptr;
    std::vector<std::unique_ptr<Zel::Sv::CommandBase>> commands_;
};

TEST_F(ScreenLoop, TheEngineerChangesThePictureModeThroughTheTvMenu) {
    EXPECT_EQ(get(kPictureTool)["PICTURE_MODE"].asString(), "Standard");
    const std::vector<unsigned char> before = frame();

    execute(kRemoteButton, R"({"BUTTONS": ["MENU", "DOWN", "RIGHT"]})");

    EXPECT_EQ(platform_.tv().get(kPictureMode), tvsim::Value(2));
    EXPECT_EQ(get(kPictureTool)["PICTURE_MODE"].asString(), "Energy Saving");
    const std::vector<unsigned char> after = frame();
    // The menu stands on the left, from (80, 100); the Energy Saving picture dims the rest.
    EXPECT_TRUE(differIn(before, after, 100, 120, 700, 500)) << "where the menu is";
    EXPECT_TRUE(differIn(before, after, 1000, 900, 800, 100)) << "the dimmer picture";
    std::vector<std::string> keys;
    for (const tvsim::JournalEntry& entry : platform_.tv().takeJournal()) {
        if (entry.key == "marlo.sl2.system.action.send.key") {
            keys.push_back(entry.arguments.at(0).value);
        }
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"KEY_MENU", "KEY_CURSOR_DOWN", "KEY_CURSOR_RIGHT"}));

    execute(kRemoteButton, R"({"BUTTONS": ["EXIT"]})");
    const std::vector<unsigned char> closed = frame();
    EXPECT_FALSE(differIn(closed, after, 1000, 900, 800, 100)) << "the picture stays dimmer";
    EXPECT_TRUE(differIn(closed, after, 100, 120, 700, 500)) << "the menu is gone";
}

TEST_F(ScreenLoop, APictureModeSetByTheToolShowsOnTheNextFrames) {
    const std::vector<unsigned char> before = frame();
    execute(kPictureTool,
            R"({"PICTURE_MODE": "Vivid", "OVERSCAN": false, "COLOUR_SATURATION": 0,
                "COLOUR_TEMPERATURE": "Medium", "ADAPTIVE_CONTRAST": "Off",
                "NOISE_REDUCTION": "Off"})");
    const std::vector<unsigned char> grey = frame();
    EXPECT_NE(grey, before);
    // The slate's background, far from its text: saturation 0 leaves no colour.
    const size_t pixel = (static_cast<size_t>(100) * 1920 + 100) * 4;
    EXPECT_EQ(grey[pixel], grey[pixel + 1]);
    EXPECT_EQ(grey[pixel + 1], grey[pixel + 2]);
    EXPECT_NE(before[pixel], before[pixel + 2]);
}

}  // namespace
