// The TV's settings menu: its pages and items, where the highlight is, and what each key does
// there. The menu keeps no setting of its own: it reads the settings to show them and names the
// setting to write when the viewer changes one.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "OnScreenTexts.h"
#include "ScreenView.h"
#include "tvsim/TvSim.h"

namespace tvsim {

using SettingReader = std::function<Value(const std::string& key)>;

struct SettingWrite {
    std::string key;
    Value value;
};

enum class MenuKey { Up, Down, Left, Right, Ok, Back };

class Menu {
public:
    enum class Item {
        InputSource,
        PictureMode,
        SoundMode,
        Volume,
        PictureSettings,
        RemoteSupport,
        Brightness,
        Contrast,
        Colour,
        ColourTemperature,
        SupportSwitch,
        GetSessionCode,
    };

    bool isOpen() const { return !levels_.empty(); }
    // Opens on the main page with its first item highlighted.
    void open();
    void close() { levels_.clear(); }
    // Up and down move the highlight (round the page), left and right change the highlighted
    // value, OK enters a page or runs an action, BACK goes up a level (and closes the menu from
    // the main page). Returns the setting the key changes, if any. Does nothing while closed.
    std::optional<SettingWrite> press(MenuKey key, const SettingReader& read);
    // Null while closed.
    std::optional<MenuView> view(const SettingReader& read, const OnScreenTexts& texts) const;
    // The highlighted item; null while closed.
    std::optional<Item> highlighted() const;

    // An item as the menu shows it.
    static MenuRow row(Item item, const SettingReader& read, const OnScreenTexts& texts);
    // What stepping the item's value forward (1) or back (-1) writes, if anything.
    static std::optional<SettingWrite> change(Item item, int32_t direction,
                                              const SettingReader& read);

private:
    enum class Page { Main, Picture, RemoteSupport };
    struct Level {
        Page page;
        size_t highlighted;
    };

    static const std::vector<Item>& itemsOf(Page page);

    std::vector<Level> levels_;  // from the main page down to the one shown
};

}  // namespace tvsim
