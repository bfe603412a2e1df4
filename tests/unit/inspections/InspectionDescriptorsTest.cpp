#include <functional>
#include <memory>
#include <vector>

#include "DeviceAgent/SupportView/Project/CommandNvDiagBTInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagHDMIInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagNetworkInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagPictureInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSoundInspection.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagSystemInfo.h"
#include "DeviceAgent/SupportView/Project/CommandNvDiagTVInspection.h"
#include "InspectionTest.h"
#include "support/SimulatedPlatform.h"

namespace norvane {
namespace inspections {
namespace {

template <typename Descriptor>
std::unique_ptr<Zel::Sv::CommandBase> make() {
    return std::make_unique<Descriptor>();
}

const std::vector<std::function<std::unique_ptr<Zel::Sv::CommandBase>()>> kInspections = {
    make<Zel::Sv::SystemInfo>,      make<Zel::Sv::PictureDiagnostic>,
    make<Zel::Sv::SoundDiagnostic>, make<Zel::Sv::HDMIDiagnostic>,
    make<Zel::Sv::TVDiagnostic>,    make<Zel::Sv::NetworkDiagnostic>,
    make<Zel::Sv::BTDiagnostic>,
};

// Expected per command id (descriptors.json): the varying slots, the descriptor document and
// the unit whose operations are traced.
TEST(InspectionDescriptors, SlotsDescriptorsAndTraces) {
    testing_support::SimulatedPlatform platform;
    for (const auto& make : kInspections) {
        const std::unique_ptr<Zel::Sv::CommandBase> command = make();
        const Json::Value expected = expectedDocument("descriptors.json", command->getId());
        SCOPED_TRACE(command->getId());
        EXPECT_EQ(command->getKind(), 2);
        EXPECT_EQ(command->getAuxTextA(), "");
        EXPECT_EQ(command->getAuxTextB(), "");
        EXPECT_EQ(command->getAuxNumber(), 0);
        EXPECT_EQ(command->getTimeoutMs(), expected["timeout"].asInt());
        EXPECT_EQ(command->getHandlerMask(), 5);

        zelsim::takeTraceEvents();
        std::unique_ptr<Zel::Sv::CommandHandler> handler(command->create());
        EXPECT_EQ(&handler->command(), command.get());
        ZelJson::Value description(ZelJson::objectValue);
        EXPECT_EQ(handler->descriptionHandler(description), 0);
        EXPECT_TRUE(description == expected["descriptor"]) << simjson::pretty(description);
        ZelJson::Value reply(ZelJson::objectValue);
        EXPECT_EQ(handler->getHandler(ZelJson::Value(), reply), 5);
        EXPECT_EQ(handler->setHandler(ZelJson::Value(), reply), 5);
        EXPECT_TRUE(reply.empty());
        ZelJson::Value report(ZelJson::objectValue);
        EXPECT_EQ(handler->executeHandler(ZelJson::Value(), report), 0);
        std::vector<std::string> traced;
        for (const zelsim::TraceEvent& event : zelsim::takeTraceEvents()) {
            if (event.enter && event.sourceUnit == expected["unit"].asString()) {
                traced.push_back(event.function);
            }
        }
        EXPECT_EQ(traced,
                  (std::vector<std::string>{"create", "descriptionHandler", "executeHandler"}));
    }
}

}  // namespace
}  // namespace inspections
}  // namespace norvane
