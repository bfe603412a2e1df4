// Every descriptor document, compared whole with the document the agent's server expects, for a
// known TV: the default profile, with the source list as the platform gives it to the source
// tool (each name followed by its alias).
#include <algorithm>
#include <functional>
#include <memory>

#include "CommandCatalogue.h"
#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandModel.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceConfig.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvRemoteButton.h"
#include "DeviceAgent/SupportView/Project/CommandNvResetFactoryDefaults.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolDTV.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolOTA.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQReset.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPQAQRestore.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPicture.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSound.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSourceChange.h"
#include "zelsim/HostSim.h"

namespace norvane {
namespace {

using testing::ElementsAre;

class Descriptors : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        tv().set("marlo.sl2.vstr.source.input.name",
                 std::vector<std::string>{"TV", "Antenna", "AVS", "Composite", "HDMI1", "Blu-ray",
                                          "HDMI2", "Sound Bar"});
    }
};

template <typename Command>
std::function<std::unique_ptr<Zel::Sv::CommandBase>()> maker() {
    return [] { return std::make_unique<Command>(); };
}

TEST_F(Descriptors, MatchTheirExpectedDocumentsWhole) {
    const std::vector<
        std::pair<const char*, std::function<std::unique_ptr<Zel::Sv::CommandBase>()>>>
        cases = {
            {"picture-diagnose.json", maker<Zel::Sv::PictureDiagnoseTool>()},
            {"sound-diagnose.json", maker<Zel::Sv::SoundDiagnoseTool>()},
            {"dtv-diagnose.json", maker<Zel::Sv::DTVDiagnoseTool>()},
            {"source-change.json", maker<Zel::Sv::SourceChangeTool>()},
            {"ota.json", maker<Zel::Sv::NorvaneOTATool>()},
            {"pq-aq-restore.json", maker<Zel::Sv::PQAQRestoreTool>()},
            {"pq-aq-reset.json", maker<Zel::Sv::PQAQResetTool>()},
            {"device-config.json", maker<Sv::GetDeviceConfig>()},
            {"remote-button.json", maker<Sv::RemoteButton>()},
            {"factory-reset.json", maker<Sv::ResetFactoryDefaults>()},
        };
    for (const auto& [file, make] : cases) {
        const Outcome description = describe(*make());
        EXPECT_EQ(description.result, 0) << file;
        EXPECT_EQ(description.document, commandDataFile(file)) << file;
    }
    EXPECT_THAT(takeJournal(), ElementsAre()) << "describing changes nothing on the TV";
}

TEST_F(Descriptors, DeviceInformationHasNoneAndLeavesTheDocumentAlone) {
    const Outcome description = describe(*maker<Sv::GetDeviceInfo>()());
    EXPECT_EQ(description.result, 5);
    EXPECT_EQ(description.document, ZelJson::Value(ZelJson::objectValue));
}

// The constant slots of every command as the agent reads them, in catalogue order.
ZelJson::Value commandsAsSeen(const std::vector<Zel::Sv::CommandBase*>& commands) {
    ZelJson::Value seen(ZelJson::arrayValue);
    for (const Zel::Sv::CommandBase* command : commands) {
        ZelJson::Value& entry = seen.append(ZelJson::Value(ZelJson::objectValue));
        entry["id"] = command->getId();
        entry["kind"] = command->getKind();
        entry["timeoutMs"] = command->getTimeoutMs();
        entry["mask"] = command->getHandlerMask();
        entry["auxTextA"] = command->getAuxTextA();
        entry["auxTextB"] = command->getAuxTextB();
        entry["auxNumber"] = command->getAuxNumber();
    }
    return seen;
}

TEST(CommandCatalogue, HoldsAllEighteenCommandsInTheAgentsOrder) {
    const std::vector<Zel::Sv::CommandBase*> commands = createCommandCatalogue();
    EXPECT_EQ(commandsAsSeen(commands), commandDataFile("catalogue.json"));
    for (Zel::Sv::CommandBase* command : commands) {
        delete command;
    }
}

// The tools trace their construction under their class names; every operation traces under
// its own name, in its command's unit.
TEST(CommandCatalogue, TracesNameTheClassOrTheOperation) {
    zelsim::takeTraceEvents();
    const std::vector<Zel::Sv::CommandBase*> commands = createCommandCatalogue();
    Zel::Sv::CommandBase* reset = *std::find_if(
        commands.begin(), commands.end(),
        [](auto* command) { return command->getId() == "7A31B2_LIVE_SUPPORT_PQ_AQ_RESET"; });
    const std::unique_ptr<Zel::Sv::CommandHandler> handler(reset->create());
    ZelJson::Value document(ZelJson::objectValue);
    handler->descriptionHandler(document);
    handler->executeHandler(document, document);
    std::vector<std::string> traced;
    for (const zelsim::TraceEvent& event : zelsim::takeTraceEvents()) {
        const std::string unitFolder = "src/DeviceAgent/SupportView/Project/";
        if (event.enter && event.sourceUnit.rfind(unitFolder, 0) == 0) {
            traced.push_back(event.function + " " + event.sourceUnit.substr(unitFolder.size()));
        }
    }
    EXPECT_THAT(
        traced,
        ElementsAre(
            "PictureDiagnoseTool CommandNvToolPicture", "SoundDiagnoseTool CommandNvToolSound",
            "DTVDiagnoseTool CommandNvToolDTV", "SourceChangeTool CommandNvToolSourceChange",
            "NorvaneOTATool CommandNvToolOTA", "PQAQRestoreTool CommandNvToolPQAQRestore",
            "PQAQResetTool CommandNvToolPQAQReset", "create CommandNvToolPQAQReset",
            "descriptionHandler CommandNvToolPQAQReset", "executeHandler CommandNvToolPQAQReset"));
    for (Zel::Sv::CommandBase* command : commands) {
        delete command;
    }
}

}  // namespace
}  // namespace norvane
