// The hidden service commands: device information and remote buttons.
#include <stdexcept>

#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvRemoteButton.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DeviceInfo : public CommandTest {
protected:
    Sv::GetDeviceInfo command;

    void withOperatorId(const std::string& operatorId) {
        zelsim::Identity identity = zelsim::identity();
        identity.opid = operatorId;
        zelsim::setIdentity(identity);
    }
};

TEST_F(DeviceInfo, ReportsTheAgentsIdentityAndTheTvsModelWithTheMacMasked) {
    withOperatorId("A1B2C3MG01XY");
    const Outcome outcome = execute(command, ZelJson::Value());
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.document, parseJson(R"json({"OUI": "A1B2C3", "MODEL_GROUP": "MG01",
        "NRDEVID": "NRDP-SIM-0001", "ESN": "NVSIM-0000000001", "MAC": "**:**:**:**:**:**",
        "CURRENT_DATE": "2026-11-23 10:00:00", "UPTIME_SECONDS": 3600,
        "MFG_SOFTWARE_VERSION": "V0312.04.06U.N0815", "MFG_COMPANY_NAME": "Norvane",
        "MFG_HARDWARE_MODEL": "55UX8(US)"})json"));
}

TEST_F(DeviceInfo, TheModelGroupIsWhatFollowsTheSixCharacterOui) {
    withOperatorId("A1B2C3");
    ZelJson::Value output = execute(command, ZelJson::Value()).document;
    EXPECT_EQ(output["OUI"], "A1B2C3");
    EXPECT_EQ(output["MODEL_GROUP"], "");

    withOperatorId("A1B2C");
    const std::unique_ptr<Zel::Sv::CommandHandler> handler(command.create());
    output = ZelJson::Value(ZelJson::objectValue);
    EXPECT_THROW(handler->executeHandler(ZelJson::Value(), output), std::out_of_range);
    EXPECT_EQ(output, parseJson(R"({"OUI": "A1B2C"})"));
}

class RemoteButtons : public CommandTest {
protected:
    Sv::RemoteButton command;
};

TEST_F(RemoteButtons, PressesOfferedNamesInOrderAndSkipsTheRest) {
    const Outcome outcome =
        execute(command, parseJson(R"({"BUTTONS": ["VOL_UP", "vol_up", "KEY_VOLUME_UP", 7, null,
                                           ["ENTER"], "KEY_INFO", "ENTER"]})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre("marlo.sl2.system.action.send.key(KEY_VOLUME_UP)",
                                           "marlo.sl2.system.action.send.key(KEY_OK)"));
    // An offered name without a TV key ends in the button map's error.
    EXPECT_THAT(
        takeLogTexts(),
        ElementsAre("Remote button: VOL_UP pressed.", "Zel Remote Button VOL_UP pressed.",
                    "Norvane Button KEY_VOLUME_UP pressed.", "Remote button: KEY_INFO pressed.",
                    "Zel Remote Button KEY_INFO pressed.", "Error! Can not find Norvane Button.",
                    "Remote button: ENTER pressed.", "Zel Remote Button ENTER pressed.",
                    "Norvane Button KEY_OK pressed."));
}

TEST_F(RemoteButtons, OnlyAMissingButtonListIsAnError) {
    EXPECT_EQ(execute(command, parseJson(R"({"BUTTONS": []})")).result, 0);
    EXPECT_THAT(takeLogTexts(), IsEmpty());
    for (const char* input : {R"({})", R"({"BUTTONS": null})"}) {
        EXPECT_EQ(execute(command, parseJson(input)).result, 3) << input;
        const std::vector<zelsim::LogLine> log = takeLogLines();
        ASSERT_EQ(log.size(), 1u);
        EXPECT_EQ(log[0].text, "Error Invalid Parameter.");
        EXPECT_EQ(log[0].severity, 2);
    }
    EXPECT_THAT(takeJournal(), IsEmpty());
}

}  // namespace
}  // namespace norvane
