// The remote-button map: the agent's button names to the TV's key names.
#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/NorvaneInterfaces"

#include <map>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace norvane {
namespace {

// Written once during start-up, read without locks afterwards.
std::map<std::string, std::string> buttonMap;

// In insertion order; a repeated agent name would keep its first key.
const std::pair<const char*, const char*> kButtons[] = {
    {"HOME", "KEY_HOME"},
    {"MENU", "KEY_MENU"},
    {"CHANNEL_UP", "KEY_CHANNEL_UP"},
    {"CHANNEL_DOWN", "KEY_CHANNEL_DOWN"},
    {"VOL_UP", "KEY_VOLUME_UP"},
    {"VOL_DOWN", "KEY_VOLUME_DOWN"},
    {"BACK", "KEY_BACK"},
    {"DOWN", "KEY_CURSOR_DOWN"},
    {"LEFT", "KEY_CURSOR_LEFT"},
    {"RIGHT", "KEY_CURSOR_RIGHT"},
    {"UP", "KEY_CURSOR_UP"},
    {"ENTER", "KEY_OK"},
    {"NUM0", "KEY_0"},
    {"NUM1", "KEY_1"},
    {"NUM2", "KEY_2"},
    {"NUM3", "KEY_3"},
    {"NUM4", "KEY_4"},
    {"NUM5", "KEY_5"},
    {"NUM6", "KEY_6"},
    {"NUM7", "KEY_7"},
    {"NUM8", "KEY_8"},
    {"NUM9", "KEY_9"},
    {"VOL_MUTE", "KEY_MUTE"},
    {"RED", "KEY_RED"},
    {"GREEN", "KEY_GREEN"},
    {"YELLOW", "KEY_YELLOW"},
    {"BLUE", "KEY_BLUE"},
    {"STOP", "KEY_STOP"},
    {"PLAY", "KEY_PLAY"},
    {"PAUSE", "KEY_PAUSE"},
    {"REWIND", "KEY_REWIND"},
    {"FAST_FORWARD", "KEY_FASTFORWARD"},
    {"RECORD", "KEY_RECORD"},
    {"CC", "KEY_CC"},
    {"MTS", "KEY_MTS"},
    {"EXIT", "KEY_EXIT"},
    {"POWER", "KEY_POWER"},
    {"INTERNET_APPS", "KEY_APP"},
    {"GUIDE", "KEY_EPG"},
    {"INPUT", "KEY_INPUT"},
    {"SKIP_PREVIOUS", "KEY_PREVIOUS"},
    {"SKIP_NEXT", "KEY_NEXT"},
    {"SVC_NETFLIX", "KEY_NETFLIX"},
    {"INFO", "KEY_INFO"},
    {"START_VOICE_RECOGNITION", "KEY_BT_VOICE"},
    {"KEY_TIME_SHIFT", "KEY_TIME_SHIFT"},
    {"KEY_EPG", "KEY_EPG"},
    {"KEY_LANGUAGE", "KEY_LANGUAGE"},
    {"KEY_SUBTITLE", "KEY_SUBTITLE"},
    {"KEY_DIY1", "KEY_DIY1"},
    {"KEY_DIY2", "KEY_DIY2"},
    {"KEY_BT_PAIR", "KEY_BT_PAIR"},
    {"KEY_YOUTUBE", "KEY_YOUTUBE"},
    {"KEY_AMAZON", "KEY_AMAZON"},
    {"KEY_WUAKI", "KEY_WUAKI"},
    {"KEY_CH_LIST", "KEY_CH_LIST"},
    {"KEY_PLAYPAUSE", "KEY_PLAYPAUSE"},
    {"KEY_COLORPAD", "KEY_COLORPAD"},
    {"KEY_PLAYPAD", "KEY_PLAYPAD"},
    {"KEY_TEXT", "KEY_TEXT"},
    {"KEY_AUDIO_ONLY", "KEY_AUDIO"},
    {"KEY_FREEVIEW", "KEY_FVP"},
    {"KEY_LITV", "KEY_TV"},
    {"KEY_P_MODE", "KEY_PICTURE"},
    {"KEY_S_MODE", "KEY_S_MODE"},
    {"KEY_MEDIA", "KEY_MIDEA"},
    {"KEY_AUDIO_DESCRIPTION", "KEY_AUDIO_DESCRIPTION"},
    {"KEY_SETTINGS", "KEY_SETTINGS"},
    {"KEY_ALLAPP", "KEY_APP"},
    {"KEY_PVR", "KEY_RECORD"},
    {"KEY_XUMO", "KEY_XUMO"},
    {"KEY_ART", "KEY_ART"},
    {"KEY_KIDS", "KEY_KIDS"},
    {"KEY_DAZN", "KEY_DAZN"},
    {"KEY_DEEZER", "KEY_DEEZER"},
    {"KEY_PLUTO_TV", "KEY_PLUTO_TV"},
    {"KEY_TUBI", "KEY_TUBI"},
    {"KEY_FREE_CONTENT", "KEY_FREE_CONTENT"},
    {"KEY_YOUTUBE_MUSIC", "KEY_YOUTUBE_MUSIC"},
    {"KEY_SPORTS_CONTENT", "KEY_SPORTS_CONTENT"},
    {"KEY_CHANNEL_RETURN", "KEY_CHANNEL_RETURN"},
    {"KEY_YOUTUBE_LIVE_TV_SERVICE", "KEY_YOUTUBE_LIVE_TV_SERVICE"},
    {"DOT", "KEY_DOT"},
    {"KEY_VUDU", "KEY_VUDU"},
    {"KEY_SLEEP", "KEY_SLEEP"},
    {"KEY_CLARO_VIDEO", "KEY_CLARO_VIDEO"},
    {"KEY_HUNGAMA_MUSIC", "KEY_HUNGAMA_MUSIC"},
    {"KEY_HUNGAMA", "KEY_HUNGAMA"},
    {"KEY_DEOD", "KEY_DEOD"},
    {"KEY_SHOWMAX", "KEY_SHOWMAX"},
    {"KEY_DSTV", "KEY_DSTV"},
    {"KEY_STAN", "KEY_STAN"},
    {"KEY_ABC_IVIEW", "KEY_ABC_IVIEW"},
    {"KEY_FLOW", "KEY_FLOW"},
    {"KEY_BROWSER", "KEY_BROWSER"},
    {"KEY_MEIDA", "KEY_MIDEA"},
};

}  // namespace

int32_t NvZelLinuxAppInit() {
    NV_HOST_LOG(kSeverityRoutine, "NvZelLinuxAppInit called.");
    for (const auto& [button, key] : kButtons) {
        buttonMap.emplace(button, key);
    }
    return 0;
}

void ZelKeyEventProc(const std::string& button) {
    NV_HOST_LOG(kSeverityRoutine, "Zel Remote Button %s pressed.", button.c_str());
    const auto found = buttonMap.find(button);
    if (found == buttonMap.end()) {
        NV_HOST_LOG(kSeverityError, "Error! Can not find Norvane Button.");
        return;
    }
    NV_HOST_LOG(kSeverityRoutine, "Norvane Button %s pressed.", found->second.c_str());
    NvKeyEventProc(std::string(found->second));
}

}  // namespace norvane
