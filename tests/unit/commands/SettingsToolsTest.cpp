// The picture and sound diagnose tools: what they report and what a whole new set writes.
#include "CommandTest.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolPicture.h"
#include "DeviceAgent/SupportView/Project/CommandNvToolSound.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ZelJson::Value pictureSet() {
    return parseJson(R"({"PICTURE_MODE": "Vivid", "OVERSCAN": true, "COLOUR_SATURATION": 150,
                         "COLOUR_TEMPERATURE": "High", "ADAPTIVE_CONTRAST": "Off",
                         "NOISE_REDUCTION": "High", "SOURCE_INPUT": "ignored",
                         "Picture_Inspection_Respond": "ignored"})");
}

ZelJson::Value soundSet() {
    return parseJson(R"({"VOLUME_NUM": 25, "MUTE": "Unmute", "SOUND_MODE": "Standard",
                         "HEADPHONE_SPEAKER": "Headphone with Speakers",
                         "AUDIO_OUTPUT": "TV Speaker", "LIP_SYNC": 3})");
}

ZelJson::Value readOnlyFlags(const ZelJson::Value& description) {
    ZelJson::Value flags(ZelJson::objectValue);
    for (const ZelJson::Value& input : description["INPUTS"]) {
        flags[input["ID"].asString()] = input["READONLY"];
    }
    return flags;
}

using PictureDiagnose = CommandTest;

TEST_F(PictureDiagnose, ReportsTheCurrentSettingsWithSourceAndAnswer) {
    Zel::Sv::PictureDiagnoseTool tool;
    const Outcome reply = get(tool, ZelJson::Value("not read"));
    EXPECT_EQ(reply.result, 0);
    EXPECT_EQ(reply.document, parseJson(R"({"SOURCE_INPUT": "HDMI1", "PICTURE_MODE": "Standard",
        "OVERSCAN": false, "COLOUR_SATURATION": 50, "COLOUR_TEMPERATURE": "Medium",
        "ADAPTIVE_CONTRAST": "Medium", "NOISE_REDUCTION": "Low",
        "Picture_Inspection_Respond": ""})"));
    EXPECT_THAT(takeJournal(), IsEmpty());
}

TEST_F(PictureDiagnose, WritesTheWholeSetInOrderAndTurnsUltraSmoothMotionOff) {
    Zel::Sv::PictureDiagnoseTool tool;
    const Outcome outcome = execute(tool, pictureSet());
    EXPECT_EQ(outcome.result, 0);
    EXPECT_THAT(
        takeJournal(),
        ElementsAre("marlo.sl2.action.video.set.picture.adjustment(0, 1, 1)",
                    "marlo.sl2.i32.video.overscan=1", "marlo.sl2.i32.video.colour.intensity=150",
                    "marlo.sl2.i32.video.enum.colour.temperature=0",
                    "marlo.sl2.i32.video.dynamic.contrast=0", "marlo.sl2.i32.video.enum.memc=0",
                    "marlo.sl2.i32.video.enum.dnc=3"));
    EXPECT_THAT(takeLogTexts(), ElementsAre("Set the Picture Settings"));
}

TEST_F(PictureDiagnose, RefusesAnIncompleteOrWronglyTypedSetAndWritesNothing) {
    Zel::Sv::PictureDiagnoseTool tool;
    ZelJson::Value saturationAsText = pictureSet();
    saturationAsText["COLOUR_SATURATION"] = "50";
    ZelJson::Value overscanAsNumber = pictureSet();
    overscanAsNumber["OVERSCAN"] = 1;
    ZelJson::Value noiseReductionMissing = pictureSet();
    noiseReductionMissing.removeMember("NOISE_REDUCTION");
    for (const ZelJson::Value& input : {saturationAsText, overscanAsNumber, noiseReductionMissing,
                                        parseJson(R"({"PICTURE_MODE": "Vivid"})")}) {
        EXPECT_EQ(execute(tool, input).result, 3) << input;
        EXPECT_THAT(takeJournal(), IsEmpty()) << input;
        const std::vector<zelsim::LogLine> log = takeLogLines();
        ASSERT_EQ(log.size(), 1u);
        EXPECT_EQ(log[0].text, "Error Invalid Parameter.");
        EXPECT_EQ(log[0].severity, 2);
    }
}

using SoundDiagnose = CommandTest;

TEST_F(SoundDiagnose, ReportsTheCurrentSettingsWithSourceAndAnswer) {
    tv().set("marlo.sl2.str.app.setting.zel.sound.respond", std::string("Sound is fine"));
    tv().set("marlo.sl2.i32.sound.main.mute", 1);
    Zel::Sv::SoundDiagnoseTool tool;
    const Outcome reply = get(tool, parseJson("[]"));
    EXPECT_EQ(reply.result, 0);
    EXPECT_EQ(reply.document, parseJson(R"({"SOURCE_NAME": "HDMI1", "VOLUME_NUM": 25,
        "MUTE": "Mute", "SOUND_MODE": "Standard", "HEADPHONE_SPEAKER": "Headphone with Speakers",
        "AUDIO_OUTPUT": "TV Speaker", "LIP_SYNC": 3,
        "Sound_Inspection_Respond": "Sound is fine"})"));
}

TEST_F(SoundDiagnose, OutputModeAndHeadphonesDecideWhatIsReadOnly) {
    Zel::Sv::SoundDiagnoseTool tool;
    tv().set("marlo.sl2.i32.sound.speaker.arc.mode", 2);
    tv().set("marlo.sl2.i32.sound.headphone.exist", 1);
    EXPECT_EQ(readOnlyFlags(describe(tool).document),
              parseJson(R"({"SOURCE_NAME": true, "VOLUME_NUM": false, "MUTE": false,
                            "SOUND_MODE": true, "HEADPHONE_SPEAKER": false,
                            "AUDIO_OUTPUT": false, "LIP_SYNC": true,
                            "Sound_Inspection_Respond": true})"));
    tv().set("marlo.sl2.i32.sound.speaker.arc.mode", 3);
    tv().set("marlo.sl2.i32.sound.headphone.exist", 0);
    const ZelJson::Value flags = readOnlyFlags(describe(tool).document);
    EXPECT_FALSE(flags["SOUND_MODE"].asBool());
    EXPECT_FALSE(flags["LIP_SYNC"].asBool());
    EXPECT_TRUE(flags["HEADPHONE_SPEAKER"].asBool());
}

TEST_F(SoundDiagnose, WritesAllSixEvenWhenUnchangedAndWhateverTheDescriptorAdvised) {
    Zel::Sv::SoundDiagnoseTool tool;
    EXPECT_EQ(execute(tool, soundSet()).result, 0);
    EXPECT_THAT(
        takeJournal(),
        ElementsAre("marlo.sl2.i32.sound.main.volume=25", "marlo.sl2.i32.sound.main.mute=0",
                    "marlo.sl2.i32.sound.enum.adjust=0", "marlo.sl2.i32.sound.headphone.mode=0",
                    "marlo.sl2.i32.sound.speaker.arc.mode=1", "marlo.sl2.i32.sound.lipsync=3"));
    EXPECT_THAT(takeLogTexts(), ElementsAre("Set Sound Settings"));

    // The read-only sound mode and lip sync of output mode 2, and values out of range, go through.
    tv().set("marlo.sl2.i32.sound.speaker.arc.mode", 2);
    ZelJson::Value beyond = soundSet();
    beyond["VOLUME_NUM"] = 130;
    beyond["SOUND_MODE"] = "Music";
    beyond["LIP_SYNC"] = -4;
    EXPECT_EQ(execute(tool, beyond).result, 0);
    const std::vector<std::string> journal = takeJournal();
    EXPECT_THAT(journal, testing::Contains("marlo.sl2.i32.sound.main.volume=130"));
    EXPECT_THAT(journal, testing::Contains("marlo.sl2.i32.sound.enum.adjust=3"));
    EXPECT_THAT(journal, testing::Contains("marlo.sl2.i32.sound.lipsync=-4"));
}

TEST_F(SoundDiagnose, RefusesAWronglyTypedVolumeAndWritesNothing) {
    Zel::Sv::SoundDiagnoseTool tool;
    ZelJson::Value volumeAsText = soundSet();
    volumeAsText["VOLUME_NUM"] = "25";
    EXPECT_EQ(execute(tool, volumeAsText).result, 3);
    EXPECT_THAT(takeJournal(), IsEmpty());
    EXPECT_THAT(takeLogTexts(), ElementsAre("Error Invalid Parameter."));
}

}  // namespace
}  // namespace norvane
