#include <gmock/gmock.h>

#include <tuple>

#include "DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"
#include "InspectionTest.h"
#include "support/SimulatedPlatform.h"

namespace norvane {
namespace inspections {
namespace {

using testing::ElementsAre;

int32_t linkType = 0;

class NetworkInspection : public testing::Test {
protected:
    testing_support::SimulatedPlatform platform;

    void SetUp() override {
        NvRegisterGetNetworkLinkStatus([] { return linkType; });
        NvRegisterGetAntenna2Signal([] { return 71; });
        NvRegisterGetRemoteControlFirmware([] { return std::string("WF-8822 2.4.1"); });
    }

    void scriptSpeedTest(int32_t result, double up, double down) {
        zelsim::Identity host = zelsim::identity();
        host.speedResult = result;
        host.speedUp = up;
        host.speedDown = down;
        zelsim::setIdentity(host);
    }
};

TEST_F(NetworkInspection, ReportsTheSpeedsOfTheLinkInUse) {
    scriptSpeedTest(0, 18.5, 94.257);
    const std::vector<std::pair<int32_t, const char*>> states = {
        {1, "wired"}, {2, "wireless"}, {0, "no link"}, {3, "no link"}};
    for (const auto& [type, state] : states) {
        linkType = type;
        EXPECT_REPORT(runInspection<Zel::Sv::NetworkDiagnostic>(), "network.json", state);
    }
}

// The test runs whatever the link; a failure is logged and the untouched speeds are shown.
TEST_F(NetworkInspection, AFailedSpeedTestIsLoggedAndReportedAsMeasured) {
    scriptSpeedTest(-1, 18.5, 94.25);
    const std::vector<std::pair<int32_t, const char*>> states = {{1, "wired, test failed"},
                                                                 {0, "no link"}};
    for (const auto& [type, state] : states) {
        linkType = type;
        EXPECT_REPORT(runInspection<Zel::Sv::NetworkDiagnostic>(), "network.json", state);
        std::vector<std::tuple<int32_t, std::string, std::string>> logged;
        for (const zelsim::LogLine& line : zelsim::takeLogLines()) {
            logged.emplace_back(line.severity, line.function, line.text);
        }
        EXPECT_THAT(logged,
                    ElementsAre(std::make_tuple(5, "executeHandler", "Do Network Inspection.\n"),
                                std::make_tuple(2, "executeHandler", "Speed Test Failed.")));
    }
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
