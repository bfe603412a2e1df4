#include "NorvaneExports.h"

#include "CommandCatalogue.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "DeviceNvValues.h"
#include "ZelLinuxApp.h"
#include "bridge/BizScreenCapture.h"
#include "bridge/ZelBizClient.h"
#include "zel/PluginApi.h"

// The agent resolves the entry points by name and calls them through these types.
static_assert(std::is_same_v<decltype(&initialize), ZelPlugin::InitializeFn>);
static_assert(std::is_same_v<decltype(&createCommandsExt), ZelPlugin::CreateCommandsFn>);
static_assert(std::is_same_v<decltype(&createDeviceValuesExt), ZelPlugin::CreateDeviceValuesFn>);
static_assert(std::is_same_v<decltype(&GetZelPassword), ZelPlugin::GetPasswordFn>);
static_assert(std::is_same_v<decltype(&fillVideoBufferExt), ZelPlugin::FillVideoBufferFn>);
static_assert(std::is_same_v<decltype(&getVideoWidthExt), ZelPlugin::GetVideoDimensionFn>);
static_assert(std::is_same_v<decltype(&getGstreamerPathExt), ZelPlugin::GetGstreamerPathFn>);

namespace {

int32_t startPlatformAdaptation() {
    norvane::RegisterZelBizInterface();
    norvane::NvZelLinuxAppInit();
    return 0;
}

}  // namespace

extern "C" {

void initialize() {
    startPlatformAdaptation();
    norvane::ZelBizClient* client = norvane::ZelBizClient::getInstance();
    norvane::AttachZelSessionObservers();
    // A neutral value first, so that the menu's next "session0" is seen as a change.
    client->setStringValue(norvane::kSessionCodeKey, "sessionDefault");
}

std::vector<Zel::Sv::CommandBase*> createCommandsExt() {
    return norvane::createCommandCatalogue();
}

Zel::Core::DeviceValues* createDeviceValuesExt(const char* deviceType) {
    return new norvane::Core::DeviceNvValues(deviceType);
}

std::string GetZelPassword() {
    return norvane::NvGetZelPassword();
}

int32_t fillVideoBufferExt(unsigned char* buffer, uint32_t size) {
    return norvane::NvFillVideoFrameBuffer(buffer, size);
}

int32_t getVideoWidthExt() {
    return norvane::videoWidth.load(std::memory_order_relaxed);
}

int32_t getVideoHeightExt() {
    return norvane::videoHeight.load(std::memory_order_relaxed);
}

std::string getGstreamerPathExt() {
    return "/3rd/ULI/lib/";
}
}
