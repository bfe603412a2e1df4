// Whatever document the agent's server sends, every command answers with its result code and
// never crashes: wrong types, missing members, arrays, null, strings and numbers where objects
// belong, and huge strings.
#include <functional>
#include <memory>

#include "CommandTest.h"
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

namespace norvane {
namespace {

using testing::IsEmpty;

// Every member any command reads.
const char* const kInputMembers[] = {"PQ_RESET",
                                     "AQ_RESET",
                                     "PQ_RESTORE",
                                     "AQ_RESTORE",
                                     "SOURCE_LIST",
                                     "PICTURE_MODE",
                                     "OVERSCAN",
                                     "COLOUR_SATURATION",
                                     "COLOUR_TEMPERATURE",
                                     "ADAPTIVE_CONTRAST",
                                     "NOISE_REDUCTION",
                                     "VOLUME_NUM",
                                     "MUTE",
                                     "SOUND_MODE",
                                     "HEADPHONE_SPEAKER",
                                     "AUDIO_OUTPUT",
                                     "LIP_SYNC",
                                     "HBBTV_FLAG",
                                     "AUDIO_LANGUAGE_LIST",
                                     "BUTTONS",
                                     "DOWNLOAD_FILE_TYPE"};

ZelJson::Value everyMemberSetTo(const ZelJson::Value& value) {
    ZelJson::Value document(ZelJson::objectValue);
    for (const char* member : kInputMembers) {
        document[member] = value;
    }
    return document;
}

struct HostileDocument {
    const char* name;
    ZelJson::Value document;
    // Whether it holds a non-null "BUTTONS": then the remote buttons have nothing to refuse.
    bool buttonsGiven;
};

std::vector<HostileDocument> hostileDocuments() {
    const std::string huge(4 * 1024 * 1024, 'x');
    ZelJson::Value nested = parseJson(R"({"a": [{"b": [[], {}, null]}]})");
    return {
        {"null", ZelJson::Value(), false},
        {"empty array", parseJson("[]"), false},
        {"array", parseJson(R"([{"PICTURE_MODE": "Vivid"}, "BUTTONS", 1])"), false},
        {"string", ZelJson::Value("PICTURE_MODE"), false},
        {"huge string", ZelJson::Value(huge), false},
        {"number", ZelJson::Value(42), false},
        {"boolean", ZelJson::Value(true), false},
        {"empty object", parseJson("{}"), false},
        {"unrelated members", parseJson(R"({"unrelated": 1, "": null})"), false},
        {"members null", everyMemberSetTo(ZelJson::Value()), false},
        {"members huge strings", everyMemberSetTo(ZelJson::Value(huge)), true},
        {"members objects", everyMemberSetTo(nested), true},
        {"members arrays", everyMemberSetTo(parseJson(R"([null, {}, [1], "VOL_UP"])")), true},
        {"members numbers", everyMemberSetTo(ZelJson::Value(1e300)), true},
        {"members big integers", everyMemberSetTo(ZelJson::Value(Json::UInt64(1) << 40)), true},
    };
}

// What each command answers to such a document.
struct CommandCase {
    const char* name;
    std::function<std::unique_ptr<Zel::Sv::CommandBase>()> make;
    int32_t executeResult;
    int32_t executeResultWithButtons;
    int32_t getResult;
};

template <typename Command>
std::unique_ptr<Zel::Sv::CommandBase> make() {
    return std::make_unique<Command>();
}

const CommandCase kCommands[] = {
    {"picture", make<Zel::Sv::PictureDiagnoseTool>, 3, 3, 0},
    {"sound", make<Zel::Sv::SoundDiagnoseTool>, 3, 3, 0},
    {"DTV", make<Zel::Sv::DTVDiagnoseTool>, 0, 0, 0},
    {"source change", make<Zel::Sv::SourceChangeTool>, 0, 0, 5},
    {"OTA", make<Zel::Sv::NorvaneOTATool>, 0, 0, 5},
    {"PQ/AQ restore", make<Zel::Sv::PQAQRestoreTool>, 0, 0, 5},
    {"PQ/AQ reset", make<Zel::Sv::PQAQResetTool>, 0, 0, 5},
    {"device config", make<Sv::GetDeviceConfig>, 0, 0, 5},
    {"remote button", make<Sv::RemoteButton>, 3, 0, 5},
    {"device info", make<Sv::GetDeviceInfo>, 0, 0, 5},
    {"factory reset", make<Sv::ResetFactoryDefaults>, 0, 0, 5},
};

using HostileInput = CommandTest;

TEST_F(HostileInput, EveryCommandAnswersItsResultCode) {
    for (const HostileDocument& hostile : hostileDocuments()) {
        for (const CommandCase& command : kCommands) {
            const std::string label = std::string(command.name) + ", " + hostile.name;
            const std::unique_ptr<Zel::Sv::CommandBase> descriptor = command.make();
            EXPECT_EQ(
                execute(*descriptor, hostile.document).result,
                hostile.buttonsGiven ? command.executeResultWithButtons : command.executeResult)
                << label;
            const Outcome reply = get(*descriptor, hostile.document);
            EXPECT_EQ(reply.result, command.getResult) << label;
            if (command.getResult == 5) {
                EXPECT_EQ(reply.document, ZelJson::Value(ZelJson::objectValue)) << label;
            }
        }
    }
}

}  // namespace
}  // namespace norvane
