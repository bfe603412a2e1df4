// The one-step tools: PQ/AQ reset and restore, change of source, OTA and factory reset, checked by
// what they leave in the TV's journal and the agent's log.
#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandNvResetFactoryDefaults.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolOTA.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQReset.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQRestore.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSourceChange.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kPictureReset = "marlo.sl2.action.video.reset.picture.settings()";
constexpr const char* kSoundReset = "marlo.sl2.action.sound.setting.reset()";
constexpr const char* kNotify = "marlo.sl2.i32.app.setting.zel.notify";
constexpr const char* kCurrentSource = "marlo.sl2.str.source.input.current";

using PQAQReset = CommandTest;

TEST_F(PQAQReset, ResetsPictureBeforeSoundAndLogsEach) {
    Zel::Sv::PQAQResetTool tool;
    const Outcome outcome = execute(tool, parseJson(R"({"AQ_RESET": "Yes", "PQ_RESET": "Yes"})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.document, ZelJson::Value(ZelJson::objectValue));
    EXPECT_THAT(takeJournal(), ElementsAre(kPictureReset, kSoundReset));
    EXPECT_THAT(takeLogTexts(),
                ElementsAre("Do PQ reset executeHandler .", "Do AQ reset executeHandler ."));
}

TEST_F(PQAQReset, OnlyAnExactYesResets) {
    Zel::Sv::PQAQResetTool tool;
    for (const char* input : {R"({"PQ_RESET": "yes", "AQ_RESET": "YES"})", R"({})",
                              R"({"PQ_RESET": true, "AQ_RESET": "Yes "})"}) {
        EXPECT_EQ(execute(tool, parseJson(input)).result, 0) << input;
    }
    EXPECT_THAT(takeJournal(), IsEmpty());
    EXPECT_EQ(execute(tool, parseJson(R"({"PQ_RESET": "No", "AQ_RESET": "Yes"})")).result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre(kSoundReset));
}

using PQAQRestore = CommandTest;

TEST_F(PQAQRestore, RestoresPictureBeforeSoundFromTheSessionsBackup) {
    Zel::Sv::PQAQRestoreTool tool;
    EXPECT_EQ(execute(tool, parseJson(R"({"AQ_RESTORE": "Yes", "PQ_RESTORE": "Yes"})")).result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre("marlo.sl2.action.system.operate.dataModule(2, 2)",
                                           "marlo.sl2.action.system.operate.dataModule(2, 1)"));
    EXPECT_THAT(takeLogTexts(),
                ElementsAre("Do PQ restore executeHandler .", "Do AQ restore executeHandler."));

    EXPECT_EQ(execute(tool, parseJson(R"({"PQ_RESTORE": "yes", "AQ_RESTORE": 1})")).result, 0);
    EXPECT_THAT(takeJournal(), IsEmpty());
}

using SourceChange = CommandTest;

TEST_F(SourceChange, SwitchesTheTvAndEchoesTheName) {
    Zel::Sv::SourceChangeTool tool;
    const Outcome outcome = execute(tool, parseJson(R"({"SOURCE_LIST": "HDMI2"})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.document, parseJson(R"({"SOURCE_LIST": "HDMI2"})"));
    EXPECT_THAT(takeJournal(),
                ElementsAre(std::string(kNotify) + "=0", std::string(kNotify) + "=10"));
    tv().waitUntilDelivered();
    EXPECT_EQ(std::get<std::string>(tv().get(kCurrentSource)), "HDMI2");
}

TEST_F(SourceChange, AWronglyTypedNameIsLoggedButNotRefused) {
    Zel::Sv::SourceChangeTool tool;
    const Outcome outcome = execute(tool, parseJson(R"({"SOURCE_LIST": 5})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.document, ZelJson::Value(ZelJson::objectValue));
    EXPECT_THAT(takeJournal(), IsEmpty());
    const std::vector<zelsim::LogLine> log = takeLogLines();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].text, "Error Invalid Parameter.");
    EXPECT_EQ(log[0].severity, 2);
}

using OneStepTools = CommandTest;

TEST_F(OneStepTools, OtaAndFactoryResetActWithoutReadingTheirInput) {
    Zel::Sv::NorvaneOTATool ota;
    EXPECT_EQ(execute(ota, parseJson(R"(["anything"])")).result, 0);
    EXPECT_THAT(takeJournal(),
                ElementsAre(std::string(kNotify) + "=0", std::string(kNotify) + "=5"));
    EXPECT_THAT(takeLogTexts(), ElementsAre("Do OTA.\n"));

    Sv::ResetFactoryDefaults factoryReset;
    EXPECT_EQ(execute(factoryReset, ZelJson::Value("anything")).result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre("marlo.sl2.action.system.factory.reset()"));
    EXPECT_THAT(takeLogTexts(), ElementsAre("Implementation of reset to factory defaults"));
}

}  // namespace
}  // namespace norvane
