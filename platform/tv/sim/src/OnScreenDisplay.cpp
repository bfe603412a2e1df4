#include "OnScreenDisplay.h"

#include <algorithm>

#include "Layout.h"

namespace tvsim {
namespace {

constexpr Colour kPanel = {16, 20, 28};
constexpr Alpha kPanelAlpha = 232;
constexpr Colour kAccent = {0, 148, 218};
constexpr Colour kText = {244, 244, 246};
constexpr Colour kDim = {156, 162, 174};
constexpr Colour kDisabled = {92, 96, 106};
constexpr Colour kTrack = {70, 76, 88};
constexpr Colour kWarning = {236, 86, 74};
constexpr Colour kCodeBox = {32, 42, 58};
constexpr Colour kLive = {80, 220, 120};

enum class Direction { Left, Right };

class Painter {
public:
    explicit Painter(Canvas& canvas) : canvas_(canvas), layout_(canvas.width(), canvas.height()) {}

    int32_t s(int32_t design) const { return layout_.size(design); }
    const Font& font(int32_t scale) const { return layout_.font(scale); }
    int32_t width() const { return layout_.width(); }
    int32_t height() const { return layout_.height(); }
    Canvas& canvas() { return canvas_; }

    void panel(const Rect& area) { canvas_.fillRounded(area, s(18), kPanel, kPanelAlpha); }

    int32_t text(int32_t left, int32_t top, const std::string& text, int32_t scale, Colour colour) {
        return canvas_.drawText(left, top, text, font(scale), colour);
    }
    void rightAligned(int32_t right, int32_t top, const std::string& text, int32_t scale,
                      Colour colour) {
        canvas_.drawText(right - font(scale).textWidth(text), top, text, font(scale), colour);
    }
    void centred(int32_t centreX, int32_t top, const std::string& text, int32_t scale,
                 Colour colour) {
        canvas_.drawText(centreX - font(scale).textWidth(text) / 2, top, text, font(scale), colour);
    }

    // A small solid triangle pointing left or right, its middle at `middle`.
    void arrow(Point middle, Direction direction, Colour colour) {
        const int32_t half = std::max(1, s(11));
        const int32_t tip = direction == Direction::Right ? half : -half;
        canvas_.fillTriangle({middle.x - tip, middle.y - half}, {middle.x - tip, middle.y + half},
                             {middle.x + tip, middle.y}, colour);
    }

    // A level bar: the track, and the part of it that `level` (0 to 100) fills.
    void levelBar(const Rect& track, int32_t level, Colour colour) {
        canvas_.fillRounded(track, track.height / 2, kTrack);
        const int32_t filled = track.width * std::clamp(level, 0, 100) / 100;
        canvas_.fillRounded({track.left, track.top, filled, track.height}, track.height / 2,
                            colour);
    }

private:
    Canvas& canvas_;
    Layout layout_;
};

void drawNoSignal(Painter& paint, const SourceView& source) {
    const int32_t width =
        std::max(paint.s(520), paint.font(7).textWidth(source.message) + paint.s(80));
    const int32_t height = paint.s(190);
    const Rect box = {(paint.width() - width) / 2, (paint.height() - height) / 2, width, height};
    paint.panel(box);
    const int32_t centre = box.left + width / 2;
    paint.centred(centre, box.top + paint.s(36), source.source, 4, kDim);
    paint.centred(centre, box.top + paint.s(92), source.message, 7, kText);
}

void drawBanner(Painter& paint, const ChannelBanner& banner) {
    const Channel& channel = banner.channel;
    const std::string number = std::to_string(channel.number);
    const int32_t left = paint.s(60);
    const int32_t top = paint.s(50);
    const int32_t textLeft = left + paint.s(30) + paint.font(10).textWidth(number) + paint.s(36);
    const int32_t textWidth =
        std::max(paint.font(5).textWidth(channel.name), paint.font(4).textWidth(channel.programme));
    paint.panel({left, top, std::max(paint.s(640), textLeft - left + textWidth + paint.s(40)),
                 paint.s(170)});
    paint.text(left + paint.s(30), top + paint.s(40), number, 10, kAccent);
    paint.text(textLeft, top + paint.s(40), channel.name, 5, kText);
    paint.text(textLeft, top + paint.s(104), channel.programme, 4, kDim);
}

void drawBanner(Painter& paint, const SourceBanner& banner) {
    const int32_t left = paint.s(60);
    const int32_t top = paint.s(50);
    const int32_t rowHeight = paint.s(60);
    const int32_t width = paint.s(560);
    paint.panel(
        {left, top, width, paint.s(90) + static_cast<int32_t>(banner.sources.size()) * rowHeight});
    paint.text(left + paint.s(30), top + paint.s(28), banner.title, 4, kDim);
    int32_t rowTop = top + paint.s(80);
    for (size_t i = 0; i < banner.sources.size(); ++i) {
        const auto& [name, alias] = banner.sources[i];
        if (i == banner.current) {
            paint.canvas().fillRounded(
                {left + paint.s(14), rowTop, width - paint.s(28), rowHeight - paint.s(6)},
                paint.s(12), kAccent);
        }
        paint.text(left + paint.s(34), rowTop + paint.s(10), name, 5, kText);
        paint.text(left + paint.s(250), rowTop + paint.s(14), alias, 4,
                   i == banner.current ? kText : kDim);
        rowTop += rowHeight;
    }
}

void drawBanner(Painter& paint, const InfoBanner& banner) {
    const int32_t margin = paint.s(60);
    const int32_t height = paint.s(220);
    const Rect box = {margin, paint.height() - margin - height, paint.width() - 2 * margin, height};
    paint.panel(box);
    paint.text(box.left + paint.s(40), box.top + paint.s(36), banner.title, 7, kText);
    paint.text(box.left + paint.s(40), box.top + paint.s(130), banner.subtitle, 5, kDim);
    int32_t rowTop = box.top + paint.s(40);
    for (const std::string& detail : banner.details) {
        paint.rightAligned(box.right() - paint.s(40), rowTop, detail, 4, kText);
        rowTop += paint.s(52);
    }
}

void drawBanner(Painter& paint, const SettingBanner& banner) {
    const int32_t left = paint.s(60);
    const int32_t top = paint.s(50);
    const int32_t width =
        std::max({paint.s(520), paint.font(6).textWidth(banner.value) + paint.s(60),
                  paint.font(4).textWidth(banner.name) + paint.s(60)});
    paint.panel({left, top, width, paint.s(150)});
    paint.text(left + paint.s(30), top + paint.s(28), banner.name, 4, kDim);
    paint.text(left + paint.s(30), top + paint.s(76), banner.value, 6, kText);
}

void drawSpeaker(Painter& paint, Point middle, Colour colour) {
    const int32_t half = paint.s(14);
    paint.canvas().fill({middle.x - paint.s(16), middle.y - half, paint.s(14), 2 * half}, colour);
    const Point mouth = {middle.x - paint.s(2), middle.y - half};
    const Point lip = {middle.x + paint.s(20), middle.y - paint.s(30)};
    const Point chin = {middle.x + paint.s(20), middle.y + paint.s(30)};
    paint.canvas().fillTriangle(mouth, lip, chin, colour);
    paint.canvas().fillTriangle(mouth, chin, {mouth.x, middle.y + half}, colour);
}

void drawVolume(Painter& paint, const VolumeView& volume) {
    const int32_t width = paint.s(820);
    const int32_t height = paint.s(110);
    const Rect box = {(paint.width() - width) / 2, paint.height() - paint.s(80) - height, width,
                      height};
    paint.panel(box);
    const int32_t middle = box.top + height / 2;
    drawSpeaker(paint, {box.left + paint.s(56), middle}, volume.muted ? kWarning : kText);
    paint.levelBar({box.left + paint.s(120), middle - paint.s(8), paint.s(540), paint.s(16)},
                   volume.level, volume.muted ? kDim : kAccent);
    const int32_t textTop = middle - paint.font(5).lineHeight() * 7 / 18;
    if (volume.muted) {
        paint.rightAligned(box.right() - paint.s(36), textTop, volume.mutedText, 5, kWarning);
    } else {
        paint.rightAligned(box.right() - paint.s(36), textTop, std::to_string(volume.level), 5,
                           kText);
    }
}

void drawMenuRow(Painter& paint, const MenuRow& row, const Rect& area, bool highlighted) {
    if (highlighted) {
        paint.canvas().fillRounded(area, paint.s(12), kAccent);
    }
    const Colour ink = row.enabled ? kText : kDisabled;
    const int32_t textTop = area.top + (area.height - paint.font(4).lineHeight() * 7 / 9) / 2;
    paint.text(area.left + paint.s(24), textTop, row.label, 4, ink);
    const int32_t right = area.right() - paint.s(28);
    const int32_t middle = area.top + area.height / 2;
    switch (row.kind) {
        case MenuRow::Kind::Choice: {
            const int32_t valueRight = highlighted ? right - paint.s(34) : right;
            paint.rightAligned(valueRight, textTop, row.value, 4, highlighted ? kText : kDim);
            if (highlighted) {
                const int32_t valueLeft = valueRight - paint.font(4).textWidth(row.value);
                paint.arrow({valueLeft - paint.s(26), middle}, Direction::Left, kText);
                paint.arrow({right - paint.s(8), middle}, Direction::Right, kText);
            }
            break;
        }
        case MenuRow::Kind::Level: {
            paint.rightAligned(right, textTop, row.value, 4, highlighted ? kText : kDim);
            const int32_t barRight = right - paint.font(4).textWidth("100") - paint.s(24);
            paint.levelBar(
                {barRight - paint.s(180), middle - paint.s(6), paint.s(180), paint.s(12)},
                row.level, highlighted ? kText : kAccent);
            break;
        }
        case MenuRow::Kind::Page:
            paint.arrow({right - paint.s(8), middle}, Direction::Right, ink);
            break;
        case MenuRow::Kind::Action:
            break;
    }
}

void drawMenu(Painter& paint, const MenuView& menu) {
    const int32_t left = paint.s(80);
    const int32_t top = paint.s(100);
    const int32_t width = paint.s(800);
    const int32_t rowHeight = paint.s(76);
    const int32_t rowsTop = top + paint.s(144);
    const int32_t height =
        paint.s(144) + static_cast<int32_t>(menu.rows.size()) * rowHeight + paint.s(96);
    paint.panel({left, top, width, height});
    paint.text(left + paint.s(40), top + paint.s(36), menu.title, 6, kText);
    paint.canvas().fill(
        {left + paint.s(40), top + paint.s(116), width - paint.s(80), std::max(1, paint.s(4))},
        kAccent);
    for (size_t i = 0; i < menu.rows.size(); ++i) {
        const Rect area = {left + paint.s(20), rowsTop + static_cast<int32_t>(i) * rowHeight,
                           width - paint.s(40), rowHeight - paint.s(8)};
        drawMenuRow(paint, menu.rows[i], area, i == menu.highlighted);
    }
    paint.text(left + paint.s(44), top + height - paint.s(62), menu.hint, 3, kDim);
}

void drawDialog(Painter& paint, const DialogView& dialog) {
    const int32_t width = paint.s(1000);
    const int32_t inner = width - paint.s(100);
    const Font& body = paint.font(4);
    const int32_t lineHeight = paint.s(50);
    const int32_t gap = paint.s(20);
    std::vector<std::vector<std::string>> paragraphs;
    for (const std::string& paragraph : dialog.paragraphs) {
        paragraphs.push_back(wrapText(paragraph, body, inner));
    }
    const std::vector<std::string> footnote = wrapText(dialog.footnote, body, inner);
    int32_t bodyHeight = static_cast<int32_t>(footnote.size()) * lineHeight;
    for (const std::vector<std::string>& lines : paragraphs) {
        bodyHeight += static_cast<int32_t>(lines.size()) * lineHeight + gap;
    }
    const int32_t codeHeight = dialog.code.empty() ? 0 : paint.s(150) + 2 * gap;
    const int32_t titleHeight = paint.s(96);
    const int32_t height = titleHeight + paint.s(40) + bodyHeight + codeHeight + paint.s(90);
    const Rect box = {(paint.width() - width) / 2, (paint.height() - height) / 2, width, height};
    paint.panel(box);
    paint.canvas().fillRounded({box.left, box.top, width, titleHeight}, paint.s(18), kAccent);
    paint.canvas().fill({box.left, box.top + titleHeight / 2, width, titleHeight - titleHeight / 2},
                        kAccent);
    paint.text(box.left + paint.s(40), box.top + paint.s(28), dialog.title, 5, kText);
    int32_t y = box.top + titleHeight + paint.s(40);
    const auto writeLines = [&](const std::vector<std::string>& lines, Colour colour) {
        for (const std::string& line : lines) {
            paint.text(box.left + paint.s(50), y, line, 4, colour);
            y += lineHeight;
        }
    };
    for (const std::vector<std::string>& lines : paragraphs) {
        writeLines(lines, kText);
        y += gap;
    }
    if (!dialog.code.empty()) {
        const Rect codeBox = {box.left + paint.s(50), y + gap, inner, paint.s(150)};
        paint.canvas().fillRounded(codeBox, paint.s(14), kCodeBox);
        const int32_t inkHeight = paint.font(12).lineHeight() * 7 / 9;
        paint.centred(box.left + width / 2, codeBox.top + (codeBox.height - inkHeight) / 2,
                      dialog.code, 12, kText);
        y += codeHeight;
    }
    writeLines(footnote, kDim);
    paint.rightAligned(box.right() - paint.s(40), box.bottom() - paint.s(56), dialog.hint, 3, kDim);
}

void drawNotice(Painter& paint, const std::string& notice) {
    const int32_t width = std::min(paint.s(1000), paint.font(4).textWidth(notice) + paint.s(100));
    const std::vector<std::string> lines = wrapText(notice, paint.font(4), width - paint.s(100));
    const int32_t lineHeight = paint.s(48);
    const Rect box = {(paint.width() - width) / 2, paint.s(60), width,
                      static_cast<int32_t>(lines.size()) * lineHeight + paint.s(52)};
    paint.panel(box);
    paint.canvas().fill({box.left, box.top + paint.s(18), paint.s(12), box.height - paint.s(36)},
                        kAccent);
    int32_t y = box.top + paint.s(30);
    for (const std::string& line : lines) {
        paint.text(box.left + paint.s(50), y, line, 4, kText);
        y += lineHeight;
    }
}

void drawBadge(Painter& paint, const std::string& badge) {
    const int32_t height = paint.s(56);
    const int32_t width = paint.font(3).textWidth(badge) + paint.s(84);
    const Rect box = {paint.width() - paint.s(60) - width, paint.s(150), width, height};
    paint.canvas().fillRounded(box, height / 2, kPanel, kPanelAlpha);
    paint.canvas().fillDisc({box.left + paint.s(32), box.top + height / 2}, paint.s(10), kLive);
    paint.text(box.left + paint.s(56), box.top + (height - paint.font(3).lineHeight() * 7 / 9) / 2,
               badge, 3, kText);
}

}  // namespace

std::vector<std::string> wrapText(const std::string& text, const Font& font, int32_t width) {
    std::vector<std::string> lines;
    std::string line;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = std::min(text.find(' ', start), text.size());
        const std::string word = text.substr(start, end - start);
        const std::string longer = line.empty() ? word : line + " " + word;
        if (!line.empty() && font.textWidth(longer) > width) {
            lines.push_back(line);
            line = word;
        } else {
            line = longer;
        }
        start = end + 1;
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

void drawOnScreenDisplays(Canvas& canvas, const ScreenView& view) {
    if (view.standby) {
        return;
    }
    Painter paint(canvas);
    if (view.source.kind == SourceView::Kind::NoSignal) {
        drawNoSignal(paint, view.source);
    }
    if (view.banner) {
        std::visit([&paint](const auto& banner) { drawBanner(paint, banner); }, *view.banner);
    }
    if (view.volume) {
        drawVolume(paint, *view.volume);
    }
    if (view.menu) {
        drawMenu(paint, *view.menu);
    }
    if (view.dialog) {
        drawDialog(paint, *view.dialog);
    }
    if (view.notice) {
        drawNotice(paint, *view.notice);
    }
    if (view.badge) {
        drawBadge(paint, *view.badge);
    }
}

}  // namespace tvsim
