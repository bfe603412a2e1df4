// What the screen shows, in words: a JSON document for people and programs that cannot look at
// the pixels (tests, agentsim's output). Members of displays that are not up are left out.
#pragma once

#include <json/value.h>

#include "ScreenView.h"

namespace tvsim {

// {
//   "standby": false,
//   "source": {"name": "HDMI1", "shows": "device" | "channel" | "no signal",
//              "device": "...", "channel": 1, "channelName": "...", "programme": "...",
//              "message": "..."},
//   "picture": {"mode": 1, "brightness": 50, "contrast": 50, "saturation": 50,
//               "temperature": 1},
//   "banner": {"kind": "channel" | "source" | "info" | "setting", "lines": ["...", ...]},
//   "volume": {"level": 25, "muted": false},
//   "menu": {"title": "...", "rows": [{"label": "...", "value": "...", "enabled": true}, ...],
//            "highlighted": 0},
//   "dialog": {"title": "...", "text": ["...", ...], "code": "..."},
//   "notice": "...",
//   "badge": "..."
// }
Json::Value describeScreen(const ScreenView& view);

}  // namespace tvsim
