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
    // The remote's keys that the TV acts on (listed in TvSoftware.cpp).
    enum class Remote : int;

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
    // Called for every change of a setting's value, with the store's lock held.
    void settingChanged(const std::string& key, const Value& value);

    ScreenView view() const;

private:
    enum class Step { Back = -1, Forward = 1 };

    SimulatedTime now() const;
    // The settings now, read before taking the lock: the store calls settingChanged with its
    // own lock held, so this software never uses the store while it holds its lock.
    SettingMap settings() const;

    // The key's effect on the software's own state, and the settings it changes (made by the
    // caller, unlocked).
    std::vector<SettingWrite> handleKey(const std::string& key, const SettingReader& read);
    std::vector<SettingWrite> handleConfirmation(bool ok, bool prompting,
                                                 const SettingReader& read);
    std::vector<SettingWrite> handleCursor(Remote remote, const SettingReader& read);
    std::vector<SettingWrite> handleMenuKey(MenuKey key, const SettingReader& read);
    std::vector<SettingWrite> stepVolume(Step step, const SettingReader& read);
    std::vector<SettingWrite> stepChannel(Step step, const SettingReader& read);
    std::vector<SettingWrite> tuneTo(int32_t number, const SettingReader& read);
    std::vector<SettingWrite> stepSource(const SettingReader& read);
    std::vector<SettingWrite> stepItem(Menu::Item item, BannerKind banner,
                                       const SettingReader& read);
    void dismissAll();

    const Channel* currentChannel(const SettingReader& read) const;
    SourceView sourceView(const SettingReader& read) const;
    std::optional<BannerView> bannerView(BannerKind kind, const SourceView& source,
                                         const SettingReader& read) const;
    std::vector<std::string> infoDetails(const SettingReader& read) const;

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
