#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;

using BizRegistration = BridgeTest;

// Slots named only by their keys reach the bridge function with that key and role.
TEST_F(BizRegistration, KeyOnlySlotsReachTheirBridgeFunctions) {
    RegisterZelBizInterface();
    tv().set("marlo.sl2.i32.nvfactory.state.open", 1);
    tv().set("marlo.sl2.str.app.setting.esn", std::string("ESN-1"));
    tv().set("marlo.sl2.i32.sound.speaker.arc.mode", 3);
    tv().set("marlo.sl2.i32.cec.functionality", 0);
    tv().set("marlo.sl2.i32.network.link.signal.antenna2", 7);
    tv().set("marlo.sl2.str.network.mac-address-ethernet", std::string("AB:CD"));
    tv().set("marlo.sl2.str.app.setting.zel.sound.respond", std::string("Sound OK"));
    tv().set("marlo.sl2.cec.input.names", std::vector<std::string>{"HDMI2-AMP"});

    EXPECT_EQ(NvGetFactoryMode(), "Factory Mode");
    EXPECT_EQ(NvGetEsn(), "ESN-1");
    EXPECT_EQ(NvGetCiPlusKeyName(), "NULL");
    EXPECT_EQ(NvGetSpdifValue(), 3);
    EXPECT_FALSE(NvIsCecEnabled());
    EXPECT_EQ(NvGetAntenna2Signal(), 7);
    EXPECT_EQ(NvGetEthernetMac(), "ab:cd");
    EXPECT_EQ(NvGetSerialNumber(), "Test_SN");
    EXPECT_EQ(NvGetSoundInspectionRespond(), "Sound OK");
    EXPECT_EQ(NvGetPictureInspectionRespond(), "");
    EXPECT_EQ(NvGetRegion(), "NA");
    std::vector<std::string> cec;
    NvGetVStrCecInputNames(cec);
    EXPECT_THAT(cec, ElementsAre("HDMI2-AMP"));

    tv().takeJournal();
    NvPictureInspectionNotifyAlt();
    NvPictureInspectionNotify();
    const char* notify = "marlo.sl2.i32.app.setting.zel.notify";
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{notify, 0}, IntWrite{notify, 4},
                                             IntWrite{notify, 0}, IntWrite{notify, 3}));
    NvKeyEventProc("KEY_MUTE");
    EXPECT_THAT(takeActions(),
                ElementsAre(ActionCall{"marlo.sl2.system.action.send.key", {{0, "KEY_MUTE"}}}));
}

}  // namespace
}  // namespace norvane
