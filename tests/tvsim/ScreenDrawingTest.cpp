// The screen's drawing units: the font, the canvas, the picture processing and the composer.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <set>

#include "Canvas.h"
#include "Font.h"
#include "OnScreenDisplay.h"
#include "PictureTone.h"
#include "ScreenComposer.h"
#include "support/PngImage.h"

namespace tvsim {

// Colours in test messages.
void PrintTo(const Colour& colour, std::ostream* out) {
    *out << "{" << int{colour.red} << ", " << int{colour.green} << ", " << int{colour.blue} << "}";
}

}  // namespace tvsim

namespace {

using tvsim::Canvas;
using tvsim::Colour;
using tvsim::Font;
using tvsim::Picture;
using tvsim::PictureAdjustments;
using tvsim::ScreenComposer;
using tvsim::ScreenView;
using tvsim::SourceView;
using tvsim::ToneMap;

constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kWhite = {255, 255, 255};
// Colours of the on-screen displays that tests look for.
constexpr Colour kAccent = {0, 148, 218};
constexpr Colour kTrack = {70, 76, 88};
constexpr Colour kDim = {156, 162, 174};

Colour pixel(const Picture& picture, int32_t width, int32_t x, int32_t y) {
    const size_t offset = (static_cast<size_t>(y) * width + x) * 4;
    return {picture.at(offset + 2), picture.at(offset + 1), picture.at(offset)};
}

Colour pixel(const Canvas& canvas, int32_t x, int32_t y) {
    return pixel(canvas.pixels(), canvas.width(), x, y);
}

int32_t countOf(const Canvas& canvas, Colour colour) {
    int32_t count = 0;
    for (int32_t y = 0; y < canvas.height(); ++y) {
        for (int32_t x = 0; x < canvas.width(); ++x) {
            count += pixel(canvas, x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

// --- Font ---

TEST(ScreenFont, EveryPrintableCharacterHasItsOwnGlyph) {
    const Font& font = Font::atScale(2);
    std::set<std::vector<uint8_t>> seen;
    for (char c = '!'; c <= '~'; ++c) {
        const tvsim::GlyphMask& glyph = font.glyph(c);
        EXPECT_EQ(glyph.height, Font::kCellHeight * 2) << c;
        EXPECT_TRUE(seen.insert(glyph.coverage).second) << c << " looks like another glyph";
        EXPECT_GT(*std::max_element(glyph.coverage.begin(), glyph.coverage.end()), 0) << c;
    }
    EXPECT_EQ(*std::max_element(font.glyph(' ').coverage.begin(), font.glyph(' ').coverage.end()),
              0);
}

TEST(ScreenFont, LettersAreProportionalAndDigitsLineUp) {
    const Font& font = Font::atScale(3);
    EXPECT_LT(font.textWidth("i"), font.textWidth("m"));
    for (char digit = '0'; digit <= '9'; ++digit) {
        EXPECT_EQ(font.glyph(digit).advance, font.glyph('0').advance) << digit;
    }
    EXPECT_EQ(Font::atScale(6).textWidth("Picture Mode"), 2 * font.textWidth("Picture Mode"));
    EXPECT_EQ(font.textWidth(""), 0);
}

TEST(ScreenFont, CharactersItLacksAreDrawnAsOneBoxEach) {
    const Font& font = Font::atScale(1);
    EXPECT_EQ(font.textWidth("\xc3\xa9"), font.textWidth("\x01")) << "one box for a UTF-8 e-acute";
    EXPECT_EQ(font.glyph('\x7f').coverage, font.glyph('\x01').coverage);
    EXPECT_NE(font.glyph('\x01').coverage, font.glyph('?').coverage);
}

// --- Canvas ---

TEST(ScreenCanvas, FillsAreClippedToTheCanvas) {
    Canvas canvas(10, 8);
    canvas.fill({-5, -5, 8, 8}, kWhite);
    canvas.fill({9, 7, 100, 100}, kWhite);
    canvas.fill({20, 20, 5, 5}, kWhite);
    EXPECT_EQ(countOf(canvas, kWhite), 9 + 1);
    EXPECT_EQ(pixel(canvas, 2, 2), kWhite);
    EXPECT_EQ(pixel(canvas, 3, 3), kBlack);
    EXPECT_EQ(pixel(canvas, 9, 7), kWhite);
    EXPECT_THROW(Canvas(0, 5), std::invalid_argument);
}

TEST(ScreenCanvas, BlendsByOpacity) {
    Canvas canvas(33, 1);  // a length that is not a whole number of blocks
    canvas.fill({0, 0, 33, 1}, {200, 100, 0});
    canvas.fill({0, 0, 33, 1}, {0, 100, 255}, 51);
    for (int32_t x = 0; x < 33; ++x) {
        ASSERT_EQ(pixel(canvas, x, 0), (Colour{160, 100, 51})) << x;
    }
    EXPECT_EQ(canvas.pixels()[3], 255) << "pictures stay opaque";
}

TEST(ScreenCanvas, RoundedPanelsLeaveTheirCornersAlone) {
    Canvas canvas(100, 60);
    canvas.fillRounded({0, 0, 100, 60}, 20, kWhite);
    EXPECT_EQ(pixel(canvas, 0, 0), kBlack);
    EXPECT_EQ(pixel(canvas, 99, 59), kBlack);
    EXPECT_EQ(pixel(canvas, 50, 0), kWhite);
    EXPECT_EQ(pixel(canvas, 0, 30), kWhite);
    EXPECT_EQ(pixel(canvas, 6, 6), kWhite);
}

TEST(ScreenCanvas, ShapesCoverTheirArea) {
    Canvas disc(200, 200);
    disc.fillDisc({100, 100}, 80, kWhite);
    EXPECT_NEAR(countOf(disc, kWhite), 3.14159 * 80 * 80, 3.14159 * 80 * 80 * 0.02);
    Canvas ring(200, 200);
    ring.fillRing({100, 100}, 80, 60, kWhite);
    EXPECT_NEAR(countOf(ring, kWhite), 3.14159 * (80 * 80 - 60 * 60), 3.14159 * 2800 * 0.04);
    EXPECT_EQ(pixel(ring, 100, 100), kBlack);
    Canvas triangle(100, 100);
    triangle.fillTriangle({0, 0}, {100, 100}, {0, 100}, kWhite);
    EXPECT_NEAR(countOf(triangle, kWhite), 5000, 100);
    EXPECT_EQ(pixel(triangle, 5, 90), kWhite);
    EXPECT_EQ(pixel(triangle, 90, 5), kBlack);
}

TEST(ScreenCanvas, GradientsRunFromOneColourToTheOther) {
    Canvas canvas(4, 11);
    canvas.verticalGradient({0, 0, 4, 11}, {0, 0, 0}, {200, 100, 50});
    EXPECT_EQ(pixel(canvas, 0, 0), (Colour{0, 0, 0}));
    EXPECT_EQ(pixel(canvas, 3, 5), (Colour{100, 50, 25}));
    EXPECT_EQ(pixel(canvas, 2, 10), (Colour{200, 100, 50}));
    canvas.horizontalGradient({0, 0, 4, 11}, kBlack, {30, 60, 90});
    EXPECT_EQ(pixel(canvas, 3, 10), (Colour{30, 60, 90}));
    EXPECT_EQ(pixel(canvas, 1, 7), (Colour{10, 20, 30}));
}

TEST(ScreenCanvas, TextInksOnlyItsOwnBox) {
    Canvas canvas(200, 60);
    const Font& font = Font::atScale(3);
    const int32_t width = canvas.drawText(20, 10, "Hello, TV!", font, kWhite);
    EXPECT_EQ(width, font.textWidth("Hello, TV!"));
    int32_t inked = 0;
    for (int32_t y = 0; y < 60; ++y) {
        for (int32_t x = 0; x < 200; ++x) {
            if (!(pixel(canvas, x, y) == kBlack)) {
                ++inked;
                EXPECT_TRUE(x >= 20 && x < 20 + width && y >= 10 && y < 10 + font.lineHeight())
                    << x << "," << y;
            }
        }
    }
    EXPECT_GT(inked, 100);
    canvas.drawText(-1000, -1000, "off the canvas", font, kWhite);
    canvas.drawText(190, 55, "half off", font, kWhite);
}

TEST(ScreenCanvas, ColoursGoThroughTheToneWhileOneIsSet) {
    PictureAdjustments grey;
    grey.saturation = 0;
    const ToneMap tone(grey);
    Canvas canvas(2, 1);
    canvas.setTone(&tone);
    canvas.fill({0, 0, 1, 1}, {255, 0, 0});
    canvas.setTone(nullptr);
    canvas.fill({1, 0, 1, 1}, {255, 0, 0});
    const Colour toned = pixel(canvas, 0, 0);
    EXPECT_TRUE(toned.red == toned.green && toned.green == toned.blue);
    EXPECT_EQ(pixel(canvas, 1, 0), (Colour{255, 0, 0}));
}

TEST(ScreenText, WrapsAtBlanksWithinTheWidth) {
    const Font& font = Font::atScale(1);
    const std::string text = "A support engineer is now connected to your TV.";
    const auto lines = tvsim::wrapText(text, font, font.textWidth("A support engineer"));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "A support engineer");
    EXPECT_EQ(lines[1] + " " + lines[2], "is now connected to your TV.");
    EXPECT_EQ(tvsim::wrapText("unbreakable", font, 1), std::vector<std::string>{"unbreakable"});
    EXPECT_TRUE(tvsim::wrapText("", font, 100).empty());
}

// --- Picture processing ---

const std::array<Colour, 6> kSamples = {
    {{0, 0, 0}, {255, 255, 255}, {128, 128, 128}, {200, 40, 40}, {30, 160, 90}, {250, 220, 10}}};

TEST(ScreenTone, StandardSettingsLeaveColoursAsTheyAre) {
    const ToneMap tone{PictureAdjustments{}};
    for (const Colour& colour : kSamples) {
        EXPECT_EQ(tone.apply(colour), colour);
    }
}

TEST(ScreenTone, SaturationZeroIsGreyAndFullSaturationIsStronger) {
    PictureAdjustments settings;
    settings.saturation = 0;
    for (const Colour& colour : kSamples) {
        const Colour grey = ToneMap(settings).apply(colour);
        EXPECT_TRUE(grey.red == grey.green && grey.green == grey.blue);
    }
    settings.saturation = 100;
    const Colour vivid = ToneMap(settings).apply({200, 40, 40});
    EXPECT_GT(vivid.red - vivid.green, 200 - 40);
}

TEST(ScreenTone, WarmIsRedderAndCoolIsBluer) {
    PictureAdjustments settings;
    settings.temperature = 2;  // Low
    const Colour warm = ToneMap(settings).apply(kWhite);
    EXPECT_GT(warm.red, warm.blue);
    settings.temperature = 3;  // Mid-Low: warm, less so
    const Colour midWarm = ToneMap(settings).apply(kWhite);
    EXPECT_GT(midWarm.blue, warm.blue);
    EXPECT_GT(midWarm.red, midWarm.blue);
    settings.temperature = 0;  // High
    const Colour cool = ToneMap(settings).apply(kWhite);
    EXPECT_GT(cool.blue, cool.red);
}

TEST(ScreenTone, BrightnessLiftsAndContrastSpreadsTheLevels) {
    const Colour mid = {128, 128, 128};
    PictureAdjustments settings;
    settings.brightness = 80;
    EXPECT_GT(ToneMap(settings).apply(mid).green, 128 + 40);
    settings.brightness = 20;
    EXPECT_LT(ToneMap(settings).apply(mid).green, 128 - 40);
    settings = PictureAdjustments{};
    settings.contrast = 90;
    EXPECT_LT(ToneMap(settings).apply({60, 60, 60}).green, 40);
    EXPECT_GT(ToneMap(settings).apply({200, 200, 200}).green, 220);
    settings.contrast = 0;
    EXPECT_NEAR(ToneMap(settings).apply(kBlack).green, ToneMap(settings).apply(kWhite).green, 110);
}

TEST(ScreenTone, EachPictureModeLooksDifferentAndEnergySavingIsDimmer) {
    std::set<std::array<uint8_t, 6>> looks;
    for (int32_t mode = 0; mode <= 6; ++mode) {
        PictureAdjustments settings;
        settings.mode = mode;
        const ToneMap tone(settings);
        const Colour light = tone.apply({220, 200, 180});
        const Colour colourful = tone.apply({200, 40, 40});
        looks.insert(
            {light.red, light.green, light.blue, colourful.red, colourful.green, colourful.blue});
    }
    EXPECT_EQ(looks.size(), 7u);
    PictureAdjustments energySaving;
    energySaving.mode = 2;
    EXPECT_LT(ToneMap(energySaving).apply(kWhite).green, 200);
}

TEST(ScreenTone, ValuesOutOfRangeCountAsTheNearestInRange) {
    PictureAdjustments wild;
    wild.mode = 99;
    wild.brightness = INT32_MAX;
    wild.contrast = INT32_MIN;
    wild.saturation = 1000;
    wild.temperature = -4;
    PictureAdjustments tame;
    tame.brightness = 100;
    tame.contrast = 0;
    tame.saturation = 100;
    for (const Colour& colour : kSamples) {
        EXPECT_EQ(ToneMap(wild).apply(colour), ToneMap(tame).apply(colour));
    }
}

// --- Composer ---

ScreenView channelView(tvsim::ChannelLook look) {
    ScreenView view;
    view.source.kind = SourceView::Kind::Channel;
    view.source.source = "TV";
    view.source.channel = {5, "Norvane Test", "Test Transmission", look};
    return view;
}

tvsim::MenuView pictureMenu() {
    tvsim::MenuView menu;
    menu.title = "Settings";
    menu.hint = "OK Select    BACK Return    EXIT Close";
    using Kind = tvsim::MenuRow::Kind;
    menu.rows = {{Kind::Choice, "Input Source", "TV", 0, true},
                 {Kind::Choice, "Picture Mode", "Energy Saving", 0, true},
                 {Kind::Choice, "Sound Mode", "Standard", 0, true},
                 {Kind::Level, "Volume", "25", 25, true},
                 {Kind::Page, "Picture Settings", "", 0, true},
                 {Kind::Page, "Remote Support", "", 0, true}};
    menu.highlighted = 1;
    return menu;
}

Picture composed(const ScreenView& view, int32_t width = 1920, int32_t height = 1080) {
    ScreenComposer composer;
    return *composer.compose(view, width, height);
}

TEST(ScreenComposer, TheSameViewGivesTheSameBytes) {
    ScreenView view = channelView(tvsim::ChannelLook::Studio);
    view.menu = pictureMenu();
    view.volume = tvsim::VolumeView{30, false, "Mute"};
    ScreenComposer composer;
    const Picture first = *composer.compose(view, 640, 360);
    ScreenView other = channelView(tvsim::ChannelLook::Pitch);
    other.picture.brightness = 70;
    composer.compose(other, 640, 360);
    EXPECT_EQ(*composer.compose(view, 640, 360), first) << "after another picture";
    EXPECT_EQ(composed(view, 640, 360), first) << "another composer";
}

TEST(ScreenComposer, StandbyIsBlack) {
    ScreenView view = channelView(tvsim::ChannelLook::Landscape);
    view.standby = true;
    view.menu = pictureMenu();
    const Picture picture = composed(view, 64, 36);
    for (size_t i = 0; i < picture.size(); i += 4) {
        ASSERT_EQ(
            pixel(picture, 64, static_cast<int32_t>(i / 4 % 64), static_cast<int32_t>(i / 4 / 64)),
            kBlack);
    }
}

TEST(ScreenComposer, TheTestCardShowsItsBarsThroughThePictureSettings) {
    ScreenView view = channelView(tvsim::ChannelLook::Bars);
    const Picture standard = composed(view);
    // Bars are 240 pixels wide; the ramp starts at row 720.
    EXPECT_EQ(pixel(standard, 1920, 100, 600), kWhite);
    EXPECT_EQ(pixel(standard, 1920, 300, 600), (Colour{255, 255, 0}));
    EXPECT_EQ(pixel(standard, 1920, 1300, 600), (Colour{255, 0, 0}));
    EXPECT_EQ(pixel(standard, 1920, 1500, 600), (Colour{0, 0, 255}));
    EXPECT_EQ(pixel(standard, 1920, 0, 1079), kBlack);
    EXPECT_EQ(pixel(standard, 1920, 1919, 1079), kWhite);

    view.picture.saturation = 0;
    const Colour grey = pixel(composed(view), 1920, 300, 600);
    EXPECT_TRUE(grey.red == grey.green && grey.green == grey.blue) << "yellow turns grey";
    view.picture = PictureAdjustments{};
    view.picture.temperature = 2;
    const Colour warmWhite = pixel(composed(view), 1920, 100, 600);
    EXPECT_GT(warmWhite.red, warmWhite.blue);
    view.picture = PictureAdjustments{};
    view.picture.mode = 2;
    EXPECT_LT(pixel(composed(view), 1920, 100, 600).green, 255);
}

TEST(ScreenComposer, NoSignalIsABoxInTheMiddleOfABlackScreen) {
    ScreenView view;
    view.source.source = "HDMI3";
    view.source.message = "No Signal";
    const Picture picture = composed(view);
    EXPECT_EQ(pixel(picture, 1920, 10, 10), kBlack);
    EXPECT_EQ(pixel(picture, 1920, 960, 300), kBlack);
    EXPECT_NE(pixel(picture, 1920, 960, 456), kBlack) << "the box";
    ScreenView translated = view;
    translated.source.message = "Kein Signal";
    EXPECT_NE(composed(translated), picture);
}

TEST(ScreenComposer, TheMenuHighlightsItsRowInTheAccentColour) {
    ScreenView view = channelView(tvsim::ChannelLook::City);
    const Picture without = composed(view);
    view.menu = pictureMenu();
    const Picture with = composed(view);
    // Rows start 244 pixels down, 76 apart, from x = 100.
    for (size_t row = 0; row < view.menu->rows.size(); ++row) {
        const Colour probe = pixel(with, 1920, 140, 248 + 76 * static_cast<int32_t>(row));
        EXPECT_EQ(probe == kAccent, row == 1) << row;
    }
    EXPECT_NE(pixel(with, 1920, 500, 700), pixel(without, 1920, 500, 700)) << "under the menu";
    EXPECT_EQ(pixel(with, 1920, 1500, 700), pixel(without, 1920, 1500, 700)) << "beside it";
}

TEST(ScreenComposer, TheVolumeBarFillsToTheLevel) {
    ScreenView view = channelView(tvsim::ChannelLook::Pitch);
    view.volume = tvsim::VolumeView{50, false, "Mute"};
    // The track runs from x = 670 for 540 pixels, at y = 945 (the bar's middle row).
    const Picture half = composed(view);
    EXPECT_EQ(pixel(half, 1920, 700, 945), kAccent);
    EXPECT_EQ(pixel(half, 1920, 930, 945), kAccent);
    EXPECT_EQ(pixel(half, 1920, 950, 945), kTrack);
    EXPECT_EQ(pixel(half, 1920, 1180, 945), kTrack);
    view.volume->muted = true;
    const Picture muted = composed(view);
    EXPECT_EQ(pixel(muted, 1920, 700, 945), kDim);
    EXPECT_EQ(pixel(muted, 1920, 950, 945), kTrack);
}

TEST(ScreenComposer, AnySizeAndAnyTextIsDrawnWithoutHarm) {
    ScreenView view = channelView(tvsim::ChannelLook::Studio);
    view.menu = pictureMenu();
    view.dialog = tvsim::DialogView{"Remote Support",
                                    {std::string(3000, 'x')},
                                    std::string(500, '9'),
                                    "\xff\xfe\xc3",
                                    "OK Close"};
    view.notice = std::string("\xe2\x82\xac uro");
    view.badge = "";
    view.banner = tvsim::SourceBanner{"Input Source", {{"TV", "Live TV"}}, 7};
    view.volume = tvsim::VolumeView{-40, false, ""};
    for (const tvsim::ChannelLook look :
         {tvsim::ChannelLook::Studio, tvsim::ChannelLook::Landscape, tvsim::ChannelLook::Pitch,
          tvsim::ChannelLook::City, tvsim::ChannelLook::Bars}) {
        view.source.channel.look = look;
        for (const auto& [width, height] :
             {std::pair<int32_t, int32_t>{1, 1}, {64, 48}, {1280, 720}, {3, 700}, {700, 3}}) {
            EXPECT_EQ(composed(view, width, height).size(),
                      static_cast<size_t>(width) * height * 4);
        }
    }
}

// A whole picture against a golden file in tests/data/screen. NORVANE_UPDATE_GOLDENS=1 rewrites
// the golden files instead.
void expectGolden(const ScreenView& view, const std::string& name) {
    constexpr int32_t kWidth = 960;
    constexpr int32_t kHeight = 540;
    const testing_support::BgraImage drawn{kWidth, kHeight, composed(view, kWidth, kHeight)};
    const std::string golden = std::string(NORVANE_TEST_DATA_DIR) + "/screen/" + name;
    if (std::getenv("NORVANE_UPDATE_GOLDENS") != nullptr) {
        testing_support::writePng(golden, drawn);
        return;
    }
    const testing_support::BgraImage expected = testing_support::readPng(golden);
    if (expected.width == kWidth && expected.height == kHeight && expected.pixels == drawn.pixels) {
        return;
    }
    const std::string saved = testing::TempDir() + name;
    testing_support::writePng(saved, drawn);
    ADD_FAILURE() << name << " is not drawn as the golden picture shows; what was drawn is in "
                  << saved;
}

TEST(ScreenGolden, MenuOverAChannel) {
    ScreenView view = channelView(tvsim::ChannelLook::Studio);
    view.source.channel = {1, "Norvane One", "Evening News", tvsim::ChannelLook::Studio};
    view.menu = pictureMenu();
    view.volume = tvsim::VolumeView{25, false, "Mute"};
    expectGolden(view, "menu-over-channel.png");
}

TEST(ScreenGolden, SessionCodeWithAnEngineerConnected) {
    ScreenView view = channelView(tvsim::ChannelLook::Landscape);
    view.source.channel = {2, "Nature HD", "Mountains of the North", tvsim::ChannelLook::Landscape};
    view.picture.mode = 0;
    view.dialog =
        tvsim::DialogView{"Remote Support",
                          {"Your session code:"},
                          "123456",
                          "Tell this code to the support engineer. It is valid for two minutes.",
                          "OK Close"};
    view.notice = "A support engineer is now connected to your TV.";
    view.badge = "Remote support";
    expectGolden(view, "session-code.png");
}

TEST(ScreenGolden, NoSignalWithTheSourceList) {
    ScreenView view;
    view.source.source = "HDMI3";
    view.source.message = "No Signal";
    view.banner = tvsim::SourceBanner{"Input Source",
                                      {{"TV", "Live TV"},
                                       {"AVS", "Composite"},
                                       {"HDMI1", "Blu-ray"},
                                       {"HDMI2", "Sound Bar"},
                                       {"HDMI3", "Game Console"},
                                       {"HDMI4", "PC"}},
                                      4};
    expectGolden(view, "no-signal-source-list.png");
}

}  // namespace
