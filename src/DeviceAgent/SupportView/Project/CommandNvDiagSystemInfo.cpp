#define NV_SOURCE_UNIT "src/DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo"

#include "DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo.h"

#include <string>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandDocuments.h"
#include "DeviceAgent/SupportView/Project/DiagnosticReports.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "common/HostLog.h"

namespace Zel {
namespace Sv {

using namespace norvane::Sv;

namespace {

// The HDCP key list alternates a key's name and its state: two keys, four entries.
constexpr size_t kHdcpEntries = 4;

// The CI+ module exists only in these regions.
bool hasCiPlus(const std::string& region) {
    return region == "EU" || region == "AU";
}

// Where the privacy rule applies, the report only says whether there is an address.
std::string shownMac(const std::string& mac, const std::string& region) {
    if (norvane::NvIsMacPrivacyRegion(region) == 0) {
        return mac;
    }
    return mac.empty() ? "MAC is NULL!" : "MAC is available.";
}

}  // namespace

CommandHandler* SystemInfo::create() {
    NV_TRACE(__func__);
    return new CommandSystemInfo(*this);
}

int32_t CommandSystemInfo::descriptionHandler(ZelJson::Value& description) {
    NV_TRACE(__func__);
    describeCommand(description, kDiagnosticCommands, "System Information",
                    "Show Norvane TV information.", 1);
    return kResultDone;
}

int32_t CommandSystemInfo::executeHandler(const ZelJson::Value&, ZelJson::Value& output) {
    NV_TRACE(__func__);
    const std::string platform = norvane::NvGetPlatformMode();
    const std::string country = norvane::NvGetSystemCountry();
    const std::string brand = norvane::NvGetBrand();
    const std::string language = norvane::NvGetSystemLanguage();
    const std::string mode = norvane::NvGetFactoryMode();
    const std::string esn = norvane::NvGetEsn();
    const std::string ciPlus = norvane::NvGetCiPlusKeyName();
    const std::string edid = norvane::NvGetEdidInfo();
    const std::string mac = norvane::NvGetEthernetMac();
    const std::string region = norvane::NvGetRegion();
    const std::string macText = shownMac(mac, region);

    const std::vector<std::string> hdcp = labelList(norvane::NvGetVStrHdcpKeyList);
    if (hdcp.size() >= kHdcpEntries) {
        output[hdcp[0]] = hdcp[1];
        output[hdcp[2]] = hdcp[3];
    }
    output["Platform"] = platform;
    output["Country"] = country;
    output["Brand"] = brand;
    output["Language"] = language;
    output["Mode"] = mode;
    output["ESN"] = esn;
    if (hasCiPlus(region)) {
        output["CI+"] = ciPlus;
    }
    output["EDID"] = edid;
    output["MAC"] = macText;
    return kResultDone;
}

}  // namespace Sv
}  // namespace Zel
