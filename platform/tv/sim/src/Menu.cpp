#include "Menu.h"

#include <algorithm>

#include "SettingKeys.h"
#include "Settings.h"

namespace tvsim {
namespace {

using Item = Menu::Item;

int32_t integerOf(const Value& value) {
    const auto* number = std::get_if<int32_t>(&value);
    return number != nullptr ? *number : 0;
}

// One value an item may take: a number with its wording, or a name as it stands.
struct Option {
    std::optional<int32_t> number;
    std::optional<Text> text;
    std::string name;

    Value value() const { return number ? Value{*number} : Value{name}; }
    bool holds(const Value& value) const {
        const auto* held = std::get_if<int32_t>(&value);
        if (number) {
            return held != nullptr && *held == *number;
        }
        const auto* text = std::get_if<std::string>(&value);
        return text != nullptr && *text == name;
    }
};

// An item whose value is one of a list.
struct Choice {
    const char* key;
    std::vector<Option> options;
    Value current;

    // The option's position, or nothing when the setting holds a value not offered.
    std::optional<size_t> currentIndex() const {
        for (size_t i = 0; i < options.size(); ++i) {
            if (options[i].holds(current)) {
                return i;
            }
        }
        return std::nullopt;
    }
};

std::vector<Option> numbered(const std::vector<std::pair<int32_t, Text>>& entries) {
    std::vector<Option> options;
    for (const auto& [number, text] : entries) {
        Option option;
        option.number = number;
        option.text = text;
        options.push_back(std::move(option));
    }
    return options;
}

std::vector<Option> pictureModes(const SettingReader& read) {
    std::vector<std::pair<int32_t, Text>> modes = {
        {0, Text::Vivid}, {1, Text::Standard}, {2, Text::EnergySaving}, {3, Text::Theater},
        {4, Text::Game},  {5, Text::Sports},   {6, Text::Calibrated}};
    // Broadcasts have no game mode.
    if (textOf(read(keys::kCurrentSource)) == kTvSource) {
        modes.erase(modes.begin() + 4);
    }
    return numbered(modes);
}

// The source list pairs each source's name with the viewer's name for it.
std::vector<Option> sources(const SettingReader& read) {
    std::vector<Option> options;
    const std::vector<std::string> list = listOf(read(keys::kSourceNames));
    for (size_t i = 0; i < list.size(); i += 2) {
        Option option;
        option.name = list[i];
        options.push_back(std::move(option));
    }
    return options;
}

std::optional<Choice> choiceOf(Item item, const SettingReader& read) {
    switch (item) {
        case Item::InputSource:
            return Choice{keys::kCurrentSource, sources(read),
                          Value{textOf(read(keys::kCurrentSource))}};
        case Item::PictureMode:
            return Choice{keys::kPictureMode, pictureModes(read), read(keys::kPictureMode)};
        case Item::SoundMode:
            return Choice{keys::kSoundMode,
                          numbered({{0, Text::Standard},
                                    {1, Text::Speech},
                                    {2, Text::LateNight},
                                    {3, Text::Music},
                                    {4, Text::Theater},
                                    {5, Text::Sports}}),
                          read(keys::kSoundMode)};
        case Item::ColourTemperature:
            // From the coolest to the warmest.
            return Choice{keys::kColourTemperature,
                          numbered({{0, Text::TemperatureHigh},
                                    {1, Text::TemperatureMedium},
                                    {3, Text::TemperatureMidLow},
                                    {2, Text::TemperatureLow}}),
                          read(keys::kColourTemperature)};
        case Item::SupportSwitch: {
            const bool on = integerOf(read(keys::kSupportEnable)) == kSupportOn;
            return Choice{keys::kSupportEnable,
                          numbered({{kSupportOff, Text::Off}, {kSupportOn, Text::On}}),
                          Value{on ? kSupportOn : kSupportOff}};
        }
        default:
            return std::nullopt;
    }
}

// The setting of an item that is a level from 0 to 100.
const char* levelKeyOf(Item item) {
    switch (item) {
        case Item::Volume:
            return keys::kVolume;
        case Item::Brightness:
            return keys::kBrightness;
        case Item::Contrast:
            return keys::kContrast;
        case Item::Colour:
            return keys::kColourSaturation;
        default:
            return nullptr;
    }
}

int32_t levelOf(const char* key, const SettingReader& read) {
    return std::clamp(integerOf(read(key)), 0, 100);
}

Text labelOf(Item item) {
    switch (item) {
        case Item::InputSource:
            return Text::InputSource;
        case Item::PictureMode:
            return Text::PictureMode;
        case Item::SoundMode:
            return Text::SoundMode;
        case Item::Volume:
            return Text::Volume;
        case Item::PictureSettings:
            return Text::PictureSettings;
        case Item::RemoteSupport:
        case Item::SupportSwitch:
            return Text::RemoteSupport;
        case Item::Brightness:
            return Text::Brightness;
        case Item::Contrast:
            return Text::Contrast;
        case Item::Colour:
            return Text::Colour;
        case Item::ColourTemperature:
            return Text::ColourTemperature;
        case Item::GetSessionCode:
            break;
    }
    return Text::GetSessionCode;
}

bool supportIsOn(const SettingReader& read) {
    return integerOf(read(keys::kSupportEnable)) == kSupportOn;
}

std::string shown(const Value& value) {
    const auto* number = std::get_if<int32_t>(&value);
    return number != nullptr ? std::to_string(*number) : textOf(value);
}

MenuRow itemRow(Item item, const SettingReader& read, const OnScreenTexts& texts) {
    MenuRow row;
    row.label = texts(labelOf(item));
    if (const std::optional<Choice> choice = choiceOf(item, read)) {
        row.kind = MenuRow::Kind::Choice;
        const std::optional<size_t> index = choice->currentIndex();
        if (!index) {
            row.value = shown(choice->current);
        } else {
            const Option& option = choice->options[*index];
            row.value = option.text ? texts(*option.text) : option.name;
        }
    } else if (const char* key = levelKeyOf(item)) {
        row.kind = MenuRow::Kind::Level;
        row.level = levelOf(key, read);
        row.value = std::to_string(row.level);
    } else if (item == Item::GetSessionCode) {
        row.kind = MenuRow::Kind::Action;
        row.enabled = supportIsOn(read);
    } else {
        row.kind = MenuRow::Kind::Page;
    }
    return row;
}

std::optional<SettingWrite> stepped(Item item, int32_t direction, const SettingReader& read) {
    if (const std::optional<Choice> choice = choiceOf(item, read)) {
        const size_t count = choice->options.size();
        if (count == 0) {
            return std::nullopt;
        }
        const std::optional<size_t> index = choice->currentIndex();
        size_t next = 0;
        if (direction > 0) {
            next = index ? (*index + 1) % count : 0;
        } else {
            next = index && *index > 0 ? *index - 1 : count - 1;
        }
        return SettingWrite{choice->key, choice->options[next].value()};
    }
    if (const char* key = levelKeyOf(item)) {
        const int32_t level = levelOf(key, read);
        const int32_t changed = std::clamp(level + direction, 0, 100);
        if (changed != level || integerOf(read(key)) != level) {
            return SettingWrite{key, Value{changed}};
        }
    }
    return std::nullopt;
}

}  // namespace

const std::vector<Item>& Menu::itemsOf(Page page) {
    static const std::vector<Item> main = {Item::InputSource,     Item::PictureMode,
                                           Item::SoundMode,       Item::Volume,
                                           Item::PictureSettings, Item::RemoteSupport};
    static const std::vector<Item> picture = {Item::Brightness, Item::Contrast, Item::Colour,
                                              Item::ColourTemperature};
    static const std::vector<Item> remoteSupport = {Item::SupportSwitch, Item::GetSessionCode};
    switch (page) {
        case Page::Picture:
            return picture;
        case Page::RemoteSupport:
            return remoteSupport;
        case Page::Main:
            break;
    }
    return main;
}

MenuRow Menu::row(Item item, const SettingReader& read, const OnScreenTexts& texts) {
    return itemRow(item, read, texts);
}

std::optional<SettingWrite> Menu::change(Item item, int32_t direction, const SettingReader& read) {
    return stepped(item, direction, read);
}

void Menu::open() {
    levels_ = {Level{Page::Main, 0}};
}

std::optional<Menu::Item> Menu::highlighted() const {
    if (levels_.empty()) {
        return std::nullopt;
    }
    return itemsOf(levels_.back().page)[levels_.back().highlighted];
}

std::optional<SettingWrite> Menu::press(MenuKey key, const SettingReader& read) {
    if (levels_.empty()) {
        return std::nullopt;
    }
    Level& level = levels_.back();
    const size_t count = itemsOf(level.page).size();
    const Item item = itemsOf(level.page)[level.highlighted];
    switch (key) {
        case MenuKey::Up:
            level.highlighted = (level.highlighted + count - 1) % count;
            break;
        case MenuKey::Down:
            level.highlighted = (level.highlighted + 1) % count;
            break;
        case MenuKey::Left:
            return stepped(item, -1, read);
        case MenuKey::Back:
            levels_.pop_back();
            break;
        case MenuKey::Right:
        case MenuKey::Ok:
            if (item == Item::PictureSettings || item == Item::RemoteSupport) {
                levels_.push_back(
                    {item == Item::PictureSettings ? Page::Picture : Page::RemoteSupport, 0});
            } else if (item == Item::GetSessionCode) {
                if (key == MenuKey::Ok && supportIsOn(read)) {
                    return SettingWrite{keys::kSessionCode, Value{std::string(kAskForSessionCode)}};
                }
            } else if (key == MenuKey::Right) {
                return stepped(item, 1, read);
            }
            break;
    }
    return std::nullopt;
}

std::optional<MenuView> Menu::view(const SettingReader& read, const OnScreenTexts& texts) const {
    if (levels_.empty()) {
        return std::nullopt;
    }
    const Level& level = levels_.back();
    MenuView view;
    switch (level.page) {
        case Page::Main:
            view.title = texts(Text::Settings);
            break;
        case Page::Picture:
            view.title = texts(Text::PictureSettings);
            break;
        case Page::RemoteSupport:
            view.title = texts(Text::RemoteSupport);
            break;
    }
    for (const Item item : itemsOf(level.page)) {
        view.rows.push_back(itemRow(item, read, texts));
    }
    view.highlighted = level.highlighted;
    view.hint = texts(Text::MenuHint);
    return view;
}

}  // namespace tvsim
