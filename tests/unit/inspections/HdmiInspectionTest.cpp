#include "DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "InspectionTest.h"

namespace norvane {
namespace inspections {
namespace {

// The HDMI readings the registered slot functions answer.
std::vector<std::string> ports;
std::vector<std::string> cecDevices;
bool cecEnabled = true;
std::string arcPort;
int arcChecks = 0;

class HdmiInspection : public testing::Test {
protected:
    void SetUp() override {
        NvRegisterGetVStrHDMIPortNameList(
            [](std::vector<std::string>& list) { return appendTo(list, ports); });
        NvRegisterGetVStrCecInputNames(
            [](std::vector<std::string>& list) { return appendTo(list, cecDevices); });
        NvRegisterIsCecEnabled([] { return cecEnabled; });
        NvRegisterGetArcPortName([] { return arcPort; });
        NvRegisterArcInspect([](std::string& result, std::string& details) {
            ++arcChecks;
            result = "NG";
            details = "ARC device error.";
            return 0;
        });
    }
};

TEST_F(HdmiInspection, DevicesAreListedUnderTheirPort) {
    ports = {"HDMI1", "HDMI2"};
    cecDevices = {"HDMI1-BD", "HDMI1-BSP"};
    EXPECT_REPORT(runInspection<Zel::Sv::HDMIDiagnostic>(), "hdmi.json", "two devices on HDMI1");
}

// A matched entry loses its first six characters, so a port whose name stood only there no
// longer finds it.
TEST_F(HdmiInspection, AMatchedEntryIsShortenedForTheLaterPorts) {
    ports = {"HDMI1", "HDMI10"};
    cecDevices = {"HDMI10-AMP", "HDMI1-BD"};
    EXPECT_REPORT(runInspection<Zel::Sv::HDMIDiagnostic>(), "hdmi.json", "HDMI1 takes HDMI10's");
}

TEST_F(HdmiInspection, OnlyTheArcPortWithDevicesIsChecked) {
    ports = {"HDMI1", "HDMI2", "HDMI3"};
    cecDevices = {"HDMI2-Soundbar", "HDMI3-Console"};
    cecEnabled = false;
    arcPort = "HDMI2";
    EXPECT_REPORT(runInspection<Zel::Sv::HDMIDiagnostic>(), "hdmi.json", "sound bar on ARC");
    EXPECT_EQ(arcChecks, 1);

    arcPort = "HDMI1";
    runInspection<Zel::Sv::HDMIDiagnostic>();
    EXPECT_EQ(arcChecks, 1) << "an ARC port without devices is not checked";
}

TEST_F(HdmiInspection, NoPortsGiveAnEmptyReport) {
    ports.clear();
    cecDevices = {"HDMI1-BD"};
    EXPECT_REPORT(runInspection<Zel::Sv::HDMIDiagnostic>(), "hdmi.json", "no ports");
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
