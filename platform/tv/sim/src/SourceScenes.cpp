#include "SourceScenes.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "Layout.h"

namespace tvsim {
namespace {

constexpr Colour kWhite = {255, 255, 255};
constexpr Colour kBlack = {0, 0, 0};

// A fixed sequence of pseudo-random numbers, so that a picture is the same every time.
class Sequence {
public:
    explicit Sequence(uint32_t seed) : state_(seed) {}
    // 0 to limit - 1.
    int32_t next(int32_t limit) {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<int32_t>((state_ >> 8) % static_cast<uint32_t>(std::max(limit, 1)));
    }

private:
    uint32_t state_;
};

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

void drawCentredText(Canvas& canvas, int32_t centreX, int32_t top, const std::string& text,
                     const Font& font, Colour colour) {
    canvas.drawText(centreX - font.textWidth(text) / 2, top, text, font, colour);
}

// A mountain with a snow cap: its peak, the height of its foot and half its width there.
void drawMountain(Canvas& canvas, Point peak, int32_t foot, int32_t halfWidth, Colour rock) {
    canvas.fillTriangle(peak, {peak.x - halfWidth, foot}, {peak.x + halfWidth, foot}, rock);
    const int32_t capDepth = (foot - peak.y) / 5;
    const int32_t capHalf = capDepth == 0 ? 0 : halfWidth * capDepth / (foot - peak.y);
    canvas.fillTriangle(peak, {peak.x - capHalf, peak.y + capDepth},
                        {peak.x + capHalf, peak.y + capDepth}, {236, 240, 246});
}

void drawTree(Canvas& canvas, const Layout& layout, int32_t x, int32_t ground, int32_t height) {
    const int32_t trunk = layout.size(height / 8);
    canvas.fill(
        {layout.x(x) - trunk / 2, layout.y(ground - height / 4), trunk, layout.y(height / 4)},
        {90, 60, 35});
    canvas.fillTriangle(layout.point(x, ground - height),
                        layout.point(x - height / 3, ground - height / 5),
                        layout.point(x + height / 3, ground - height / 5), {30, 90, 45});
}

void drawLandscape(Canvas& canvas, const Layout& layout) {
    canvas.verticalGradient(layout.stretched(0, 0, 1920, 640), {70, 130, 205}, {196, 224, 242});
    canvas.fillDisc(layout.point(1460, 220), layout.size(135), {255, 244, 214}, 70);
    canvas.fillDisc(layout.point(1460, 220), layout.size(88), {255, 236, 170});
    drawMountain(canvas, layout.point(330, 300), layout.y(660), layout.x(430), {118, 136, 168});
    drawMountain(canvas, layout.point(1380, 340), layout.y(660), layout.x(460), {124, 142, 174});
    drawMountain(canvas, layout.point(850, 250), layout.y(660), layout.x(520), {98, 116, 152});
    canvas.verticalGradient(layout.stretched(0, 640, 1920, 260), {96, 146, 196}, {52, 92, 144});
    canvas.fillDisc(layout.point(380, 1120), layout.size(560), {74, 146, 70});
    canvas.fillDisc(layout.point(1560, 1180), layout.size(700), {62, 130, 60});
    canvas.verticalGradient(layout.stretched(0, 900, 1920, 180), {84, 154, 62}, {50, 112, 40});
    for (const auto& [x, height] : {std::pair<int32_t, int32_t>{150, 260},
                                    {260, 200},
                                    {1650, 300},
                                    {1780, 240},
                                    {1120, 180}}) {
        drawTree(canvas, layout, x, 930, height);
    }
}

void drawPresenter(Canvas& canvas, const Layout& layout) {
    canvas.fillRounded(layout.stretched(820, 560, 360, 420), layout.size(130), {38, 44, 62});
    canvas.fillTriangle(layout.point(930, 566), layout.point(1070, 566), layout.point(1000, 680),
                        {236, 238, 242});
    canvas.fillTriangle(layout.point(984, 580), layout.point(1016, 580), layout.point(1000, 720),
                        {170, 30, 40});
    canvas.fill(layout.stretched(965, 500, 70, 70), {214, 172, 140});
    canvas.fillDisc(layout.point(1000, 420), layout.size(98), {62, 42, 32});
    canvas.fillDisc(layout.point(1000, 448), layout.size(84), {226, 186, 152});
}

void drawStudio(Canvas& canvas, const Layout& layout, const Channel& channel) {
    canvas.verticalGradient(layout.stretched(0, 0, 1920, 1080), {12, 30, 72}, {24, 66, 126});
    const Point globe = layout.point(1480, 420);
    const int32_t radius = layout.size(300);
    canvas.fillDisc(globe, radius, {42, 104, 172});
    canvas.fillDisc(layout.point(1410, 360), layout.size(120), {58, 138, 96});
    canvas.fillDisc(layout.point(1580, 520), layout.size(90), {58, 138, 96});
    for (int32_t step = -2; step <= 2; ++step) {
        const int32_t rise = radius * step / 3;
        const auto half = static_cast<int32_t>(
            integerSquareRoot(int64_t{radius} * radius - int64_t{rise} * rise));
        canvas.fill({globe.x - half, globe.y + rise, 2 * half, std::max(1, layout.size(4))},
                    {120, 180, 230}, 150);
    }
    canvas.fillRing(globe, radius, radius - std::max(1, layout.size(6)), {150, 200, 240});
    drawPresenter(canvas, layout);
    canvas.fillTriangle(layout.point(180, 780), layout.point(1740, 780), layout.point(1920, 1080),
                        {176, 186, 204});
    canvas.fillTriangle(layout.point(180, 780), layout.point(1920, 1080), layout.point(0, 1080),
                        {176, 186, 204});
    canvas.fill(layout.stretched(180, 780, 1560, 8), {222, 228, 238});
    canvas.fill(layout.stretched(0, 856, 1920, 104), {196, 28, 40});
    canvas.drawText(layout.x(80), layout.y(876), upperCase(channel.programme), layout.font(7),
                    kWhite);
    canvas.fill(layout.stretched(0, 960, 1920, 64), {16, 18, 28});
    canvas.drawText(layout.x(80), layout.y(976),
                    "Weather: sunny spells, 21 C  |  Markets steady  |  Traffic: all roads clear",
                    layout.font(4), {230, 230, 236});
}

void drawPlayer(Canvas& canvas, const Layout& layout, Point at, Colour shirt) {
    canvas.fillDisc(at, layout.size(16), shirt);
    canvas.fillDisc({at.x, at.y - layout.size(22)}, layout.size(9), {232, 196, 160});
}

void drawPitch(Canvas& canvas, const Layout& layout) {
    constexpr int32_t kStripes = 10;
    for (int32_t stripe = 0; stripe < kStripes; ++stripe) {
        const Colour grass = stripe % 2 == 0 ? Colour{42, 140, 62} : Colour{52, 160, 72};
        canvas.fill(layout.stretched(0, stripe * 108, 1920, 108), grass);
    }
    const int32_t line = std::max(1, layout.size(8));
    const Rect field = layout.stretched(120, 100, 1680, 880);
    canvas.fill({field.left, field.top, field.width, line}, kWhite);
    canvas.fill({field.left, field.bottom() - line, field.width, line}, kWhite);
    canvas.fill({field.left, field.top, line, field.height}, kWhite);
    canvas.fill({field.right() - line, field.top, line, field.height}, kWhite);
    canvas.fill({layout.x(960) - line / 2, field.top, line, field.height}, kWhite);
    canvas.fillRing(layout.point(960, 540), layout.size(180), layout.size(180) - line, kWhite);
    for (const Rect& box :
         {layout.stretched(120, 340, 240, 400), layout.stretched(1560, 340, 240, 400)}) {
        canvas.fill({box.left, box.top, box.width, line}, kWhite);
        canvas.fill({box.left, box.bottom() - line, box.width, line}, kWhite);
        canvas.fill(
            {box.left == field.left ? box.right() - line : box.left, box.top, line, box.height},
            kWhite);
    }
    Sequence positions(7);
    for (int32_t player = 0; player < 14; ++player) {
        const Point at = layout.point(200 + positions.next(1520), 180 + positions.next(740));
        drawPlayer(canvas, layout, at, player % 2 == 0 ? Colour{200, 30, 40} : Colour{30, 60, 200});
    }
    canvas.fillDisc(layout.point(1010, 590), layout.size(10), kWhite);
    canvas.fillRounded(layout.stretched(60, 50, 470, 72), layout.size(12), {24, 26, 36});
    canvas.drawText(layout.x(84), layout.y(64), "CTY 1-0 UTD   63:12", layout.font(5), kWhite);
}

void drawCity(Canvas& canvas, const Layout& layout) {
    canvas.verticalGradient(layout.stretched(0, 0, 1920, 1080), {4, 8, 32}, {34, 42, 92});
    Sequence sky(11);
    const int32_t star = std::max(1, layout.size(3));
    for (int32_t i = 0; i < 140; ++i) {
        canvas.fill({layout.x(sky.next(1920)), layout.y(sky.next(600)), star, star},
                    {230, 230, 250}, static_cast<Alpha>(120 + sky.next(135)));
    }
    canvas.fillDisc(layout.point(1500, 280), layout.size(80), {240, 238, 218});
    canvas.fillDisc(layout.point(1480, 262), layout.size(16), {212, 210, 192});
    canvas.fillDisc(layout.point(1526, 304), layout.size(11), {212, 210, 192});
    Sequence skyline(5);
    for (int32_t left = 0; left < 1920;) {
        const int32_t width = 90 + skyline.next(120);
        const int32_t top = 520 + skyline.next(300);
        canvas.fill(layout.stretched(left, top, width - 10, 1080 - top), {14, 17, 30});
        for (int32_t row = top + 24; row < 1040; row += 44) {
            for (int32_t column = left + 16; column + 20 < left + width - 10; column += 34) {
                if (skyline.next(3) == 0) {
                    canvas.fill(layout.stretched(column, row, 16, 22), {250, 212, 120});
                }
            }
        }
        left += width;
    }
    // The film's own black bars.
    canvas.fill(layout.stretched(0, 0, 1920, 130), kBlack);
    canvas.fill(layout.stretched(0, 950, 1920, 130), kBlack);
}

// The broadcaster's mark in the top corner: the channel number and name.
void drawChannelMark(Canvas& canvas, const Layout& layout, const Channel& channel) {
    const Font& font = layout.font(5);
    const std::string mark = std::to_string(channel.number) + "  " + upperCase(channel.name);
    const int32_t width = font.textWidth(mark);
    const int32_t right = layout.width() - layout.size(70);
    const int32_t top = layout.size(56);
    const int32_t pad = layout.size(16);
    canvas.fillRounded({right - width - pad, top - pad, width + 2 * pad, font.lineHeight() + pad},
                       layout.size(10), kBlack, 90);
    canvas.drawText(right - width, top - pad / 3, mark, font, kWhite, 220);
}

void drawDeviceSlate(Canvas& canvas, const Layout& layout, const SourceView& source) {
    canvas.verticalGradient(layout.stretched(0, 0, 1920, 1080), {22, 18, 58}, {64, 32, 94});
    const int32_t centre = layout.width() / 2;
    const Rect box = {centre - layout.size(230), layout.y(330), layout.size(460), layout.size(130)};
    canvas.fillRounded(box, layout.size(22), {34, 36, 48});
    canvas.fill({box.left + layout.size(40), box.top + box.height / 2, layout.size(220),
                 std::max(1, layout.size(8))},
                {14, 14, 20});
    canvas.fillDisc({box.right() - layout.size(60), box.top + box.height / 2}, layout.size(12),
                    {80, 220, 120});
    drawCentredText(canvas, centre, layout.y(540), source.device, layout.font(12), {244, 240, 255});
    drawCentredText(canvas, centre, layout.y(690), source.source, layout.font(5), {186, 176, 224});
}

}  // namespace

void drawTestCard(Canvas& canvas) {
    constexpr Colour kBars[] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                                {255, 0, 255},   {255, 0, 0},   {0, 0, 255},   {0, 0, 0}};
    constexpr int32_t kBarCount = sizeof(kBars) / sizeof(kBars[0]);
    const int32_t width = canvas.width();
    const int32_t barRows = canvas.height() * 2 / 3;
    for (int32_t bar = 0; bar < kBarCount; ++bar) {
        const int32_t left = (width * bar + kBarCount - 1) / kBarCount;
        const int32_t right = (width * (bar + 1) + kBarCount - 1) / kBarCount;
        canvas.fill({left, 0, right - left, barRows}, kBars[bar]);
    }
    canvas.horizontalGradient({0, barRows, width, canvas.height() - barRows}, kBlack, kWhite);
    const Layout layout(width, canvas.height());
    const Font& font = layout.font(8);
    const std::string caption = "NORVANE TV";
    const int32_t captionWidth = font.textWidth(caption);
    const int32_t pad = font.scale() * 2;
    const Rect paper = {(width - captionWidth) / 2 - pad,
                        (canvas.height() - font.lineHeight()) / 2 - pad, captionWidth + 2 * pad,
                        font.lineHeight() + pad};
    canvas.fill(paper, kBlack);
    canvas.drawText(paper.left + pad, paper.top + pad, caption, font, kWhite);
}

void drawSourcePicture(Canvas& canvas, const SourceView& source) {
    const Layout layout(canvas.width(), canvas.height());
    switch (source.kind) {
        case SourceView::Kind::NoSignal:
            canvas.fill({0, 0, canvas.width(), canvas.height()}, kBlack);
            return;
        case SourceView::Kind::Device:
            drawDeviceSlate(canvas, layout, source);
            return;
        case SourceView::Kind::Channel:
            break;
    }
    switch (source.channel.look) {
        case ChannelLook::Studio:
            drawStudio(canvas, layout, source.channel);
            break;
        case ChannelLook::Landscape:
            drawLandscape(canvas, layout);
            break;
        case ChannelLook::Pitch:
            drawPitch(canvas, layout);
            break;
        case ChannelLook::City:
            drawCity(canvas, layout);
            break;
        case ChannelLook::Bars:
            drawTestCard(canvas);
            break;
    }
    drawChannelMark(canvas, layout, source.channel);
}

}  // namespace tvsim
