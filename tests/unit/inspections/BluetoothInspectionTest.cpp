#include "DeviceAgent/SupportView/Project/CommandNvDiagBTInspection.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "InspectionTest.h"

namespace norvane {
namespace inspections {
namespace {

// The Bluetooth lists the registered slot functions answer.
std::vector<std::string> selfDiagnosis;
std::vector<std::string> devices;

class BluetoothInspection : public testing::Test {
protected:
    void SetUp() override {
        NvRegisterGetVStrBTSelfDiagnoseInfo(
            [](std::vector<std::string>& list) { return appendTo(list, selfDiagnosis); });
        NvRegisterGetVStrBTDeviceList(
            [](std::vector<std::string>& list) { return appendTo(list, devices); });
    }
};

// Each entry is "name,address,profile,attribute"; names may hold commas, and an entry without
// the four fields is a name alone.
TEST_F(BluetoothInspection, EachEntryIsOneDeviceRecord) {
    selfDiagnosis = {"OK", "BT module 5.0", "BT_FW_5.0.3", "extra"};
    devices = {"SB300 Sound Bar,00:1A:7D:DA:71:13,A2DP,Connected",
               "Kitchen, left,00:1A:7D:DA:71:14,A2DP,Paired", "Norvane Voice Remote",
               "Speaker,00:1A:7D:DA:71:15", ",,,"};
    EXPECT_REPORT(runInspection<Zel::Sv::BTDiagnostic>(), "bluetooth.json", "device shapes");
}

TEST_F(BluetoothInspection, AShortSelfDiagnosisFailsAndNoDevicesGiveAnEmptyList) {
    selfDiagnosis = {"OK", "BT module 5.0"};
    devices.clear();
    EXPECT_REPORT(runInspection<Zel::Sv::BTDiagnostic>(), "bluetooth.json", "module silent");
}

TEST(BluetoothInspectionStandIns, WithoutTheTvTheTestListsAreShown) {
    NvRegisterGetVStrBTSelfDiagnoseInfo(nullptr);
    NvRegisterGetVStrBTDeviceList(nullptr);
    EXPECT_REPORT(runInspection<Zel::Sv::BTDiagnostic>(), "bluetooth.json", "stand-in lists");
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
