#include "bridge/BizLanguages.h"

#include <climits>
#include <fstream>
#include <sstream>

#include "BridgeTest.h"

namespace norvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMenu = "marlo.sl2.i32.language.osd";
constexpr const char* kAudio = "marlo.sl2.i32.language.audio.favoured";
constexpr const char* kSubtitle = "marlo.sl2.i32.language.audio.alternative";

std::string trackDocument(const std::string& name) {
    std::ifstream file(std::string(NORVANE_TEST_DATA_DIR) + "/bridge/" + name, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

using BizLanguages = BridgeTest;

TEST_F(BizLanguages, NumbersReadAsNamesWithTheirOwnFallbacks) {
    // number, menu language, audio and subtitle language
    const std::vector<std::pair<int32_t, std::pair<std::string, std::string>>> cases = {
        {1, {"English", "English"}}, {55, {"Traditional Chinese", "Traditional Chinese"}},
        {0, {"German", "German"}},   {69, {"Tamil", "Tamil"}},
        {70, {"English", ""}},       {-1, {"English", ""}},
    };
    for (const auto& [number, names] : cases) {
        tv().set(kMenu, number);
        tv().set(kAudio, number);
        tv().set(kSubtitle, number);
        EXPECT_EQ(BizGetSystemLanguage(), names.first) << number;
        EXPECT_EQ(BizGetCurrentAudioLanguage(), names.second) << number;
        EXPECT_EQ(BizGetCurrentSubtitle(), names.second) << number;
    }
    console.take();
    tv().set(kMenu, 70);
    BizGetSystemLanguage();
    EXPECT_THAT(consoleLines(), ElementsAre("\t<-- BizGetSystemLanguage called. -->\n",
                                            "\t<** Get System default Language. **>\n"));
}

TEST_F(BizLanguages, SettersWriteTheNumberOfAnExactName) {
    EXPECT_EQ(BizSetAudioLanguage("Chinese"), 0);
    EXPECT_EQ(BizSetCurrentSubtitle("Traditional Chinese"), 0);
    EXPECT_THAT(takeIntWrites(), ElementsAre(IntWrite{kAudio, 19}, IntWrite{kSubtitle, 55}));
    EXPECT_THAT(consoleLines(), testing::Contains("\t<-- Set Current Subtitle to  Traditional "
                                                  "Chinese.\n -->\n"));

    for (const char* unknown : {"chinese", "Chinese ", "", "Klingon"}) {
        EXPECT_EQ(BizSetAudioLanguage(unknown), -1);
        EXPECT_EQ(BizSetCurrentSubtitle(unknown), -1);
    }
    EXPECT_THAT(tv().takeJournal(), IsEmpty());
    EXPECT_THAT(console.take(), "");
}

TEST(BizLanguageTracks, ReadersListTheLanguageNumbersAfterALeadingZero) {
    struct Case {
        const char* document;
        int32_t (*reader)(const std::string&, std::vector<int32_t>&);
        int32_t status;
        std::vector<int32_t> languages;
    };
    const std::vector<Case> cases = {
        {"subtitles-two-tracks.json", BizParseSubtitleInfo, 0, {0, 1, 0}},
        {"subtitles-irregular-members.json",
         BizParseSubtitleInfo,
         0,
         {0, 0, 12, 0, 0, 7, INT32_MAX}},
        {"audio-tracks.json", BizParseAudioLanguageInfo, 0, {0, 19, 1, 69}},
        {"subtitles-member-missing.json", BizParseSubtitleInfo, -1, {0, 1}},
        {"subtitles-truncated.json", BizParseSubtitleInfo, -1, {0}},
        {"subtitles-two-tracks.json", BizParseAudioLanguageInfo, -1, {0}},
        {"audio-tracks.json", BizParseSubtitleInfo, -1, {0}},
    };
    for (const Case& test : cases) {
        const std::string json = trackDocument(test.document);
        ASSERT_FALSE(json.empty()) << test.document;
        std::vector<int32_t> languages{5, 6};
        EXPECT_EQ(test.reader(json, languages), test.status) << test.document;
        EXPECT_EQ(languages, test.languages) << test.document;
    }
}

TEST(BizLanguageTracks, HostileTextIsRejectedWithoutThrowing) {
    const char withNul[] = "{\"SubtitleInfo\": [{\"subtitleIso639\": \"eng#1\0\"}]}";
    const std::vector<std::string> texts = {
        "",
        "not json",
        "{\"SubtitleInfo\": [{\"subtitleIso639\": \"\xff\xfe#3\"}]}",
        std::string(200000, '[') + std::string(200000, ']'),
        std::string(withNul, sizeof withNul - 1),
    };
    for (const std::string& text : texts) {
        std::vector<int32_t> languages{9};
        EXPECT_EQ(BizParseSubtitleInfo(text, languages), -1) << text.substr(0, 40);
        EXPECT_THAT(languages, ElementsAre(0));
    }
}

}  // namespace
}  // namespace norvane
