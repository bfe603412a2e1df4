#include "DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "InspectionTest.h"

namespace norvane {
namespace inspections {
namespace {

// The sound readings the registered slot functions answer.
int32_t outputMode = 0;
bool bluetoothSoundDevice = false;
bool headphonePresent = false;

TEST(SoundInspection, ExactlyTheActiveOutputPassesAndAnyHeadphonePathCounts) {
    NvRegisterGetSpdifValue([] { return outputMode; });
    NvRegisterIsBTSoundBarType([] { return bluetoothSoundDevice; });
    NvRegisterIsHeadphoneConnected([] { return headphonePresent; });
    struct State {
        int32_t mode;
        bool bluetooth;
        bool headphone;
        const char* name;
    };
    const State states[] = {
        {1, false, false, "TV speaker"},     {2, false, true, "ARC speaker, headphone plugged in"},
        {3, false, false, "SPDIF only"},     {4, true, false, "BT sound bar"},
        {0, false, false, "unknown output"}, {5, false, false, "unknown output"},
    };
    for (const State& state : states) {
        outputMode = state.mode;
        bluetoothSoundDevice = state.bluetooth;
        headphonePresent = state.headphone;
        EXPECT_REPORT(runInspection<Zel::Sv::SoundDiagnostic>(), "sound.json", state.name);
    }
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
