// The TV settings through which the TV's menu and the plug-in's session controller talk, and the
// values they use.
#pragma once

#include <cstdint>

namespace agentsim {

constexpr const char* kRemoteSupportKey = "marlo.sl2.i32.app.setting.zel.enable";
constexpr const char* kSessionCodeKey = "marlo.sl2.str.app.setting.zel.session.code";
constexpr const char* kSessionNotifyKey = "marlo.sl2.i32.app.setting.zel.notify";
constexpr const char* kNetworkAvailableKey = "marlo.sl2.i32.local.network.available";
constexpr const char* kScreenCaptureKey = "marlo.sl2.action.system.capture.screen";

constexpr int32_t kRemoteSupportOn = 0xA5A5;
constexpr int32_t kRemoteSupportOff = 0x5A5A;
// What the menu writes to ask for a code.
constexpr const char* kAskForCode = "session0";
// The notify values after their leading 0.
constexpr int32_t kNotifyConnected = 1;
constexpr int32_t kNotifyDisconnected = 2;

// Host session states as the session controller reads them.
constexpr int32_t kHostIdle = 1;
constexpr int32_t kHostCodeIssued = 4;
constexpr int32_t kHostConnected = 5;
constexpr int32_t kHostDisconnected = 6;

}  // namespace agentsim
