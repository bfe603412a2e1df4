// The inspections on the simulated TV's own default state, through the real bridge.
#include <gmock/gmock.h>

#include "DeviceAgent/SupportView/Project/CommandNvDiagBTInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagPictureInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagTVInspection.h"
#include "InspectionTest.h"
#include "NorvaneExports.h"
#include "support/SimulatedPlatform.h"

namespace norvane {
namespace inspections {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* kNotifyKey = "marlo.sl2.i32.app.setting.zel.notify";

class DefaultProfileInspection : public testing::Test {
protected:
    testing_support::SimulatedPlatform platform;

    void SetUp() override {
        platform.tv().loadDefaultProfile();
        initialize();
        platform.tv().takeJournal();
    }

    // The integer writes to the TV since the previous take.
    std::vector<std::pair<std::string, int32_t>> takeIntWrites() {
        std::vector<std::pair<std::string, int32_t>> writes;
        for (const tvsim::JournalEntry& entry : platform.tv().takeJournal()) {
            if (const auto* value = std::get_if<int32_t>(&entry.value);
                entry.kind == tvsim::JournalEntry::Kind::Write && value != nullptr) {
                writes.emplace_back(entry.key, *value);
            }
        }
        return writes;
    }
};

TEST_F(DefaultProfileInspection, ReportsTheTvsState) {
    const char* file = "default-profile.json";
    EXPECT_REPORT(runInspection<Zel::Sv::SystemInfo>(), file, "system information");
    EXPECT_REPORT(runInspection<Zel::Sv::PictureDiagnostic>(), file, "picture");
    EXPECT_REPORT(runInspection<Zel::Sv::SoundDiagnostic>(), file, "sound");
    EXPECT_REPORT(runInspection<Zel::Sv::HDMIDiagnostic>(), file, "HDMI");
    EXPECT_REPORT(runInspection<Zel::Sv::TVDiagnostic>(), file, "TV");
    EXPECT_REPORT(runInspection<Zel::Sv::NetworkDiagnostic>(), file, "network");
    EXPECT_REPORT(runInspection<Zel::Sv::BTDiagnostic>(), file, "Bluetooth");
}

// Writing 0 first makes a repeated check a change that the TV's application sees.
TEST_F(DefaultProfileInspection, SoundAndPictureChecksAreRequestedFromTheTv) {
    runInspection<Zel::Sv::SoundDiagnostic>();
    EXPECT_THAT(takeIntWrites(), ElementsAre(Pair(kNotifyKey, 0), Pair(kNotifyKey, 4)));
    runInspection<Zel::Sv::PictureDiagnostic>();
    EXPECT_THAT(takeIntWrites(), ElementsAre(Pair(kNotifyKey, 0), Pair(kNotifyKey, 3)));
    runInspection<Zel::Sv::HDMIDiagnostic>();
    runInspection<Zel::Sv::SystemInfo>();
    EXPECT_THAT(takeIntWrites(), ElementsAre()) << "the other inspections only read";
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
