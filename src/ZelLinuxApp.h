// Remote support sessions asked for in the TV's own menu: the enable and session-code observers,
// the poll thread that follows the agent's session state, and the connect/disconnect reports
// back to the TV.
#pragma once

#include <cstdint>
#include <string>

#include "tvmodelapi/Observer.h"

namespace norvane {

constexpr int32_t kRemoteSupportOn = 0xA5A5;
constexpr int32_t kRemoteSupportOff = 0x5A5A;

constexpr const char* kEnableKey = "marlo.sl2.i32.app.setting.zel.enable";
constexpr const char* kSessionCodeKey = "marlo.sl2.str.app.setting.zel.session.code";
constexpr const char* kNotifyKey = "marlo.sl2.i32.app.setting.zel.notify";

class ZelEnbleObserver : public tvmodelapi::ObserverNumericInteger {
public:
    void onDisconnected() override;
    void onChange(int32_t value) override;
};

class SessionCodeObserver : public tvmodelapi::ObserverString {
public:
    void onDisconnected() override;
    void onChange(const std::string& value) override;
};

// Start-up: attaches the two observers for the life of the process.
void AttachZelSessionObservers();

// Both always return 0.
int32_t StartZelSessionSupport();
int32_t StopZelSessionSupport();
// 0 with a code (or "connectedAlready") in `code`, 1 on a server error, 2 on a network error.
int32_t RequestZelSessionCode(std::string& code);
// 0 when the agent reported the host gone within `timeoutSeconds` (0: no limit), else 1.
int32_t WaitZelHostDown(int32_t timeoutSeconds);
int32_t SetSessionConnectStatus(int32_t value);
// 2 outside the supported region or brand, or when a software update check was started;
// otherwise 1.
int32_t ZelRegionQuery();

}  // namespace norvane
