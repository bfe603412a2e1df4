#include "DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "InspectionTest.h"

namespace norvane {
namespace inspections {
namespace {

// The readings the registered slot functions answer; the identity texts are the stand-ins.
std::string region;
std::string mac;
std::vector<std::string> hdcpKeys;

class SystemInfoInspection : public testing::Test {
protected:
    void SetUp() override {
        NvRegisterGetRegion([] { return region; });
        NvRegisterGetEthernetMac([] { return mac; });
        // The address is withheld in this one region only.
        NvRegisterIsMacPrivacyRegion(
            [](const std::string& asked) { return asked == "EU" ? 1 : 0; });
        NvRegisterGetVStrHdcpKeyList(
            [](std::vector<std::string>& list) { return appendTo(list, hdcpKeys); });
    }

    void expectReport(const char* state) {
        EXPECT_REPORT(runInspection<Zel::Sv::SystemInfo>(), "system-info.json", state);
    }
};

TEST_F(SystemInfoInspection, HdcpPairsAppearWithAllFourEntries) {
    region = "NA";
    mac = "a4:3b:0c:11:22:33";
    hdcpKeys = {"HDCP1.4 key", "NVHDCP14-55UX8", "HDCP2.2 key", "NULL"};
    expectReport("NA with HDCP keys");
    hdcpKeys.pop_back();
    expectReport("NA, HDCP list cut short");
}

TEST_F(SystemInfoInspection, CiPlusOnlyInEuropeAndAustralia) {
    mac = "a4:3b:0c:11:22:33";
    hdcpKeys.clear();
    region = "AU";
    expectReport("AU");
    region = "JP";
    expectReport("JP");
}

TEST_F(SystemInfoInspection, ThePrivacyRuleHidesTheAddress) {
    region = "EU";
    hdcpKeys.clear();
    mac = "a4:3b:0c:11:22:33";
    expectReport("EU, address withheld");
    mac.clear();
    expectReport("EU, no address");
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
