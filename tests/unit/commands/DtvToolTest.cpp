// The DTV diagnose tool: it works on the tuner source, and offers HbbTV only in the regions that
// have it.
#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolDTV.h"
#include "DeviceAgent/SupportView/Project/NorvaneInterfaces.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSwitchToTuner[] = {"marlo.sl2.i32.app.setting.zel.notify=0",
                                          "marlo.sl2.i32.app.setting.zel.notify=7"};
constexpr const char* kCurrentSource = "marlo.sl2.str.source.input.current";

class DtvDiagnose : public CommandTest {
protected:
    Zel::Sv::DTVDiagnoseTool tool;

    // The TV's own region reader knows no region with HbbTV; these cases stand one in.
    static void inRegion(std::string (*region)()) { NvRegisterGetRegion(region); }
};

TEST_F(DtvDiagnose, GettingAndExecutingSwitchToTheTunerFirstDescribingDoesNot) {
    describe(tool);
    EXPECT_THAT(takeJournal(), IsEmpty());

    const Outcome reply = get(tool, ZelJson::Value());
    EXPECT_EQ(reply.result, 0);
    EXPECT_EQ(reply.document, parseJson(R"({"AUDIO_LANGUAGE_LIST": "English"})"));
    EXPECT_THAT(takeJournal(), ElementsAre(kSwitchToTuner[0], kSwitchToTuner[1]));
    tv().waitUntilDelivered();
    EXPECT_EQ(std::get<std::string>(tv().get(kCurrentSource)), "TV");

    EXPECT_EQ(get(tool, ZelJson::Value()).result, 0);
    EXPECT_THAT(takeJournal(), IsEmpty()) << "already on the tuner";

    tv().set(kCurrentSource, std::string("HDMI1"));
    EXPECT_EQ(execute(tool, parseJson("{}")).result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre(kSwitchToTuner[0], kSwitchToTuner[1]));
}

TEST_F(DtvDiagnose, OutsideTheHbbTVRegionsTheFlagIsNeitherShownNorApplied) {
    const Outcome outcome =
        execute(tool, parseJson(R"({"HBBTV_FLAG": false, "AUDIO_LANGUAGE_LIST": "French"})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre(kSwitchToTuner[0], kSwitchToTuner[1],
                                           "marlo.sl2.i32.language.audio.favoured=2"));
}

TEST_F(DtvDiagnose, InAnHbbTVRegionTheFlagIsShownAndAppliedWhenItIsABoolean) {
    inRegion([] { return std::string("AU"); });
    EXPECT_EQ(describe(tool).document, commandDataFile("dtv-diagnose-hbbtv.json"));
    EXPECT_EQ(get(tool, ZelJson::Value()).document,
              parseJson(R"({"HBBTV_FLAG": true, "AUDIO_LANGUAGE_LIST": "English"})"));
    takeJournal();

    EXPECT_EQ(execute(tool, parseJson(R"({"HBBTV_FLAG": false})")).result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre("marlo.sl2.i32.basic.settings.enum.dvb.mode.hbbtv=0"));

    inRegion([] { return std::string("EU"); });
    const Outcome outcome =
        execute(tool, parseJson(R"({"HBBTV_FLAG": "true", "AUDIO_LANGUAGE_LIST": "German"})"));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_THAT(takeJournal(), ElementsAre("marlo.sl2.i32.language.audio.favoured=0"));
}

}  // namespace
}  // namespace norvane
