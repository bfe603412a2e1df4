#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvRemoteButton"

#include "DeviceAgent/SupportView/Project/CommandNvRemoteButton.h"

#include <algorithm>
#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace norvane {
namespace Sv {

namespace {

constexpr const char* kButtons = "BUTTONS";

// The names offered to the agent, in display order; built when the plug-in is loaded.
const std::vector<std::string> kOfferedButtons = {"BACK",
                                                  "BLUE",
                                                  "CC",
                                                  "CHANNEL_DOWN",
                                                  "CHANNEL_RECALL",
                                                  "CHANNEL_UP",
                                                  "DOT",
                                                  "DOWN",
                                                  "ENTER",
                                                  "EXIT",
                                                  "FAST_FORWARD",
                                                  "GREEN",
                                                  "GUIDE",
                                                  "HOME",
                                                  "INPUT",
                                                  "INTERNET_APPS",
                                                  "LEFT",
                                                  "MENU",
                                                  "MTS",
                                                  "NUM0",
                                                  "NUM1",
                                                  "NUM2",
                                                  "NUM3",
                                                  "NUM4",
                                                  "NUM5",
                                                  "NUM6",
                                                  "NUM7",
                                                  "NUM8",
                                                  "NUM9",
                                                  "PAUSE",
                                                  "PLAY",
                                                  "POWER",
                                                  "QUICK_MENU",
                                                  "RECORD",
                                                  "RED",
                                                  "REWIND",
                                                  "RIGHT",
                                                  "SETUP",
                                                  "SKIP_NEXT",
                                                  "SKIP_PREVIOUS",
                                                  "STOP",
                                                  "SVC_NETFLIX",
                                                  "UNKNOWN",
                                                  "UP",
                                                  "VOL_DOWN",
                                                  "VOL_MUTE",
                                                  "VOL_UP",
                                                  "YELLOW",
                                                  "START_VOICE_RECOGNITION",
                                                  "INFO",
                                                  "KEY_INFO",
                                                  "KEY_TIME_SHIFT",
                                                  "KEY_EPG",
                                                  "KEY_LANGUAGE",
                                                  "KEY_SUBTITLE",
                                                  "KEY_DIY1",
                                                  "KEY_DIY2",
                                                  "KEY_BT_PAIR",
                                                  "KEY_YOUTUBE",
                                                  "KEY_AMAZON",
                                                  "KEY_WUAKI",
                                                  "KEY_CH_LIST",
                                                  "KEY_PLAYPAUSE",
                                                  "KEY_COLORPAD",
                                                  "KEY_PLAYPAD",
                                                  "KEY_TEXT",
                                                  "KEY_AUDIO_ONLY",
                                                  "KEY_FREEVIEW",
                                                  "KEY_LITV",
                                                  "KEY_P_MODE",
                                                  "KEY_S_MODE",
                                                  "KEY_MEDIA",
                                                  "KEY_AUDIO_DESCRIPTION",
                                                  "KEY_SETTINGS",
                                                  "KEY_ALLAPP",
                                                  "KEY_PVR",
                                                  "KEY_XUMO",
                                                  "KEY_ART",
                                                  "KEY_KIDS",
                                                  "KEY_DAZN",
                                                  "KEY_DEEZER",
                                                  "KEY_PLUTO_TV",
                                                  "KEY_TUBI",
                                                  "KEY_FREE_CONTENT",
                                                  "KEY_YOUTUBE_MUSIC",
                                                  "KEY_SPORTS_CONTENT",
                                                  "KEY_CHANNEL_RETURN",
                                                  "KEY_YOUTUBE_LIVE_TV_SERVICE",
                                                  "KEY_DOT",
                                                  "KEY_VUDU",
                                                  "KEY_SLEEP",
                                                  "KEY_CLARO_VIDEO",
                                                  "KEY_HUNGAMA_MUSIC",
                                                  "KEY_HUNGAMA",
                                                  "KEY_DEOD",
                                                  "KEY_SHOWMAX",
                                                  "KEY_DSTV",
                                                  "KEY_STAN",
                                                  "KEY_ABC_IVIEW",
                                                  "KEY_FLOW",
                                                  "KEY_BROWSER",
                                                  "KEY_MEIDA"};

bool isOffered(const std::string& name) {
    return std::find(kOfferedButtons.begin(), kOfferedButtons.end(), name) != kOfferedButtons.end();
}

}  // namespace

Zel::Sv::CommandHandler* RemoteButton::create() {
    NV_TRACE(__func__);
    return new CommandRemoteButton(*this);
}

// A hidden service command: no category, name or order, only the buttons to choose from.
int32_t CommandRemoteButton::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    ZelJson::Value inputs = emptyArray();
    inputs.append(InputBuilder(kButtons, "Buttons", "Remote control buttons to press, in order.", 1,
                               kInputList)
                      .values(kOfferedButtons)
                      .shown(false)
                      .build());
    description["INPUTS"] = inputs;
    description["OUTPUTS"] = emptyArray();
    return kResultDone;
}

int32_t CommandRemoteButton::executeHandler(const ZelJson::Value& input, ZelJson::Value&) {
    NV_TRACE(__func__);
    const ZelJson::Value* buttons = findMember(input, kButtons);
    if (buttons == nullptr || buttons->isNull()) {
        NV_HOST_LOG(kSeverityError, "%s", kInvalidParameterMessage);
        return kResultInvalidParameter;
    }
    if (!buttons->isArray()) {
        return kResultDone;
    }
    for (const ZelJson::Value& button : *buttons) {
        if (button.isString() && isOffered(button.asString())) {
            NV_HOST_LOG(kSeverityRoutine, "Remote button: %s pressed.", button.asCString());
            ZelKeyEventProc(button.asString());
        }
    }
    return kResultDone;
}

}  // namespace Sv
}  // namespace norvane
