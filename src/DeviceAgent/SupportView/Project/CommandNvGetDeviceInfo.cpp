#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo"

#include "DeviceAgent/SupportView/Project/CommandNvGetDeviceInfo.h"

#include <string>

#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"
#include "zel/sv/CommandManager.h"
#include "zel/sv/Time.h"

namespace norvane {
namespace Sv {

namespace {
// The operator id is the maker's OUI followed by the model group.
constexpr size_t kOuiLength = 6;
constexpr size_t kModelGroupLength = 4;
// The MAC address is never reported.
constexpr const char* kMaskedMac = "**:**:**:**:**:**";
}  // namespace

Zel::Sv::CommandHandler* GetDeviceInfo::create() {
    NV_TRACE(__func__);
    return new CommandGetDeviceInfo(*this);
}

int32_t CommandGetDeviceInfo::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    const Zel::Sv::CommandManager& manager = Zel::Sv::CommandManager::Instance();
    const std::string operatorId = manager.getOpid();
    output["OUI"] = operatorId.substr(0, kOuiLength);
    output["MODEL_GROUP"] = operatorId.substr(kOuiLength, kModelGroupLength);
    output["NRDEVID"] = manager.getId();
    output["ESN"] = manager.getEsn();
    output["MAC"] = kMaskedMac;
    output["CURRENT_DATE"] = Zel::Sv::Time::GetCurrentDateTime();
    output["UPTIME_SECONDS"] = static_cast<Json::Int64>(Zel::Sv::Time::GetUptime());
    output["MFG_SOFTWARE_VERSION"] = NvGetSwVersion();
    output["MFG_COMPANY_NAME"] = manager.getBrand();
    output["MFG_HARDWARE_MODEL"] = NvGetZelModel();
    return kResultDone;
}

}  // namespace Sv
}  // namespace norvane
