// The TV's own software: what it does with the remote's keys, how it answers changes of its
// settings (whoever makes them) with on-screen displays, and what the screen shows at a given
// moment. Every change it makes goes through the settings store, so that observers and readers
// see it as they see any other.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Channel.h"
#include "DisplayTimers.h"
#include "Menu.h"
#include "OnScreenTexts.h"
#include "ScaledClock.h"
#include "ScreenView.h"
#include "Store.h"
#include "SupportPrompt.h"

namespace tvsim {

class TvSoftware {
public:
    TvSoftware(Store& store, const ScaledClock& clock) : store_(store), clock_(clock) {}
    TvSoftware(const TvSoftware&) = delete;
    TvSoftware& operator=(const TvSoftware&) = delete;

    // A TV just switched on with this channel list and on-screen wording: nothing on screen
    // but the picture.
    void configure(const std::vector<Channel>& channels,
                   const std::map<std::string, std::string>& wordings);
    void reset() { configure({}, {}); }

    // A remote key, by the TV's key name ("KEY_MENU"); keys the TV does not know do nothing.
    void pressKey(const std::string& key);
    // Called after every change of a setting's value.
    void settingChanged(const std::string& key, const Value& value);

    ScreenView view() const;

private:
    enum class Step { Back = -1, Forward = 1 };

    SimulatedTime now() const;
    Value read(const std::string& key) const { return store_.get(key); }
    SettingReader reader() const;

    // The key's effect on the software's own state, and the settings it changes (made by the
    // caller, unlocked, because every change comes back through settingChanged).
    std::vector<SettingWrite> handleKey(const std::string& key);
    std::vector<SettingWrite> handleMenuKey(MenuKey key);
    std::vector<SettingWrite> stepVolume(Step step);
    std::vector<SettingWrite> stepChannel(Step step);
    std::vector<SettingWrite> tuneTo(int32_t number);
    std::vector<SettingWrite> stepSource();
    std::vector<SettingWrite> stepItem(Menu::Item item, BannerKind banner);
    void dismissAll();

    const Channel* currentChannel() const;
    SourceView sourceView() const;
    std::optional<BannerView> bannerView(BannerKind kind, const SourceView& source) const;
    std::vector<std::string> infoDetails() const;

    Store& store_;
    const ScaledClock& clock_;

    mutable std::mutex mutex_;  // guards the members below
    std::vector<Channel> channels_;
    OnScreenTexts texts_;
    Menu menu_;
    DisplayTimers displays_;
    SupportPrompt prompt_;
    bool standby_ = false;
    std::optional<int32_t> previousChannel_;
};

}  // namespace tvsim
