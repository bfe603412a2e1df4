// What the screen shows at one moment, in words and numbers: the source's picture with the
// picture settings, and the on-screen displays above it. The TV's software describes it; the
// composer draws it. Texts are final (already in the TV's on-screen language).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Channel.h"
#include "PictureTone.h"

namespace tvsim {

// What the current source delivers.
struct SourceView {
    enum class Kind { NoSignal, Channel, Device };
    Kind kind = Kind::NoSignal;
    std::string source;   // the input's name ("HDMI1")
    Channel channel;      // Kind::Channel
    std::string device;   // Kind::Device: the device's name
    std::string message;  // Kind::NoSignal: what the TV says about it

    bool operator==(const SourceView& other) const {
        return kind == other.kind && source == other.source && channel == other.channel &&
               device == other.device && message == other.message;
    }
};

struct VolumeView {
    int32_t level = 0;  // 0 to 100
    bool muted = false;
    std::string mutedText;
};

struct ChannelBanner {
    Channel channel;
};

struct SourceBanner {
    std::string title;
    std::vector<std::pair<std::string, std::string>> sources;  // name, alias
    size_t current = 0;
};

struct InfoBanner {
    std::string title;
    std::string subtitle;
    std::vector<std::string> details;
};

// One setting changed by its own key (picture mode, sound mode).
struct SettingBanner {
    std::string name;
    std::string value;
};

using BannerView = std::variant<ChannelBanner, SourceBanner, InfoBanner, SettingBanner>;

struct MenuRow {
    enum class Kind { Choice, Level, Page, Action };
    Kind kind = Kind::Choice;
    std::string label;
    std::string value;  // Choice and Level
    int32_t level = 0;  // Level: 0 to 100
    bool enabled = true;
};

struct MenuView {
    std::string title;
    std::vector<MenuRow> rows;
    size_t highlighted = 0;
    std::string hint;
};

struct DialogView {
    std::string title;
    std::vector<std::string> paragraphs;
    std::string code;      // shown large, below the paragraphs, when not empty
    std::string footnote;  // below the code
    std::string hint;
};

struct ScreenView {
    bool standby = false;  // a black screen and nothing else
    SourceView source;
    PictureAdjustments picture;
    std::optional<BannerView> banner;
    std::optional<VolumeView> volume;
    std::optional<MenuView> menu;
    std::optional<DialogView> dialog;
    std::optional<std::string> notice;
    std::optional<std::string> badge;  // a lasting mark in the corner
};

}  // namespace tvsim
