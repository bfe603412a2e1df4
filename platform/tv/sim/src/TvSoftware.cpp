#include "TvSoftware.h"

#include <algorithm>

#include "SettingKeys.h"
#include "Settings.h"

namespace tvsim {

enum class TvSoftware::Remote : int {
    Power,
    VolumeUp,
    VolumeDown,
    Mute,
    Menu,
    Exit,
    Back,
    Ok,
    Up,
    Down,
    Left,
    Right,
    ChannelUp,
    ChannelDown,
    ChannelReturn,
    Input,
    Info,
    PictureMode,
    SoundMode,
    TvSource,
};

namespace {

using Remote = TvSoftware::Remote;

struct KeyName {
    const char* name;
    Remote remote;
};

// The keys the TV acts on, by the names its key-injection action takes.
constexpr KeyName kKeys[] = {
    {"KEY_POWER", Remote::Power},
    {"KEY_VOLUME_UP", Remote::VolumeUp},
    {"KEY_VOLUME_DOWN", Remote::VolumeDown},
    {"KEY_MUTE", Remote::Mute},
    {"KEY_MENU", Remote::Menu},
    {"KEY_SETTINGS", Remote::Menu},
    {"KEY_EXIT", Remote::Exit},
    {"KEY_HOME", Remote::Exit},
    {"KEY_BACK", Remote::Back},
    {"KEY_OK", Remote::Ok},
    {"KEY_CURSOR_UP", Remote::Up},
    {"KEY_CURSOR_DOWN", Remote::Down},
    {"KEY_CURSOR_LEFT", Remote::Left},
    {"KEY_CURSOR_RIGHT", Remote::Right},
    {"KEY_CHANNEL_UP", Remote::ChannelUp},
    {"KEY_CHANNEL_DOWN", Remote::ChannelDown},
    {"KEY_CHANNEL_RETURN", Remote::ChannelReturn},
    {"KEY_INPUT", Remote::Input},
    {"KEY_INFO", Remote::Info},
    {"KEY_PICTURE", Remote::PictureMode},
    {"KEY_S_MODE", Remote::SoundMode},
    {"KEY_TV", Remote::TvSource},
};

std::optional<Remote> remoteOf(const std::string& key) {
    for (const KeyName& known : kKeys) {
        if (key == known.name) {
            return known.remote;
        }
    }
    return std::nullopt;
}

// The digit of "KEY_0" ... "KEY_9".
std::optional<int32_t> digitOf(const std::string& key) {
    if (key.size() == 5 && key.compare(0, 4, "KEY_") == 0 && key[4] >= '0' && key[4] <= '9') {
        return key[4] - '0';
    }
    return std::nullopt;
}

MenuKey cursorKeyOf(Remote remote) {
    switch (remote) {
        case Remote::Up:
            return MenuKey::Up;
        case Remote::Down:
            return MenuKey::Down;
        case Remote::Left:
            return MenuKey::Left;
        default:
            return MenuKey::Right;
    }
}

int32_t integerOf(const Value& value) {
    const auto* number = std::get_if<int32_t>(&value);
    return number != nullptr ? *number : 0;
}

// The source names of the source list, which pairs each name with the viewer's name for it.
std::vector<std::pair<std::string, std::string>> sourcePairs(const Value& list) {
    const std::vector<std::string> entries = listOf(list);
    std::vector<std::pair<std::string, std::string>> pairs;
    for (size_t i = 0; i < entries.size(); i += 2) {
        pairs.emplace_back(entries[i], i + 1 < entries.size() ? entries[i + 1] : std::string());
    }
    return pairs;
}

size_t indexOf(const std::vector<std::pair<std::string, std::string>>& sources,
               const std::string& name) {
    const auto found = std::find_if(sources.begin(), sources.end(),
                                    [&name](const auto& source) { return source.first == name; });
    return static_cast<size_t>(found - sources.begin());
}

// The device on an input, from the CEC list's "<input>-<device>" entries.
std::optional<std::string> cecDeviceOn(const std::string& input, const Value& devices) {
    for (const std::string& entry : listOf(devices)) {
        const size_t dash = entry.find('-');
        if (dash != std::string::npos && entry.compare(0, dash, input) == 0 && dash > 0) {
            return entry.substr(dash + 1);
        }
    }
    return std::nullopt;
}

// Reads a snapshot of the settings as the store reads them.
SettingReader readerOf(const SettingMap& settings) {
    return [&settings](const std::string& key) {
        const auto found = settings.find(key);
        return found != settings.end() ? found->second : defaultValue(keyType(key));
    };
}

int32_t storedOr(const SettingMap& settings, const char* key, int32_t fallback) {
    const auto found = settings.find(key);
    if (found == settings.end()) {
        return fallback;
    }
    const auto* number = std::get_if<int32_t>(&found->second);
    return number != nullptr ? *number : fallback;
}

}  // namespace

void TvSoftware::configure(const std::vector<Channel>& channels,
                           const std::map<std::string, std::string>& wordings) {
    std::lock_guard<std::mutex> lock(mutex_);
    channels_ = channels;
    texts_.setWordings(wordings);
    menu_.close();
    displays_.hideAll();
    prompt_ = SupportPrompt();
    standby_ = false;
    previousChannel_.reset();
}

SimulatedTime TvSoftware::now() const {
    const timespec time = clock_.now();
    return static_cast<SimulatedTime>(time.tv_sec) * kSecond + time.tv_nsec;
}

SettingMap TvSoftware::settings() const {
    return store_.snapshot("marlo.sl2.");
}

void TvSoftware::pressKey(const std::string& key) {
    const SettingMap current = settings();
    const SettingReader read = readerOf(current);
    std::vector<SettingWrite> writes;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        writes = handleKey(key, read);
    }
    for (const SettingWrite& write : writes) {
        store_.set(write.key, write.value);
    }
}

std::vector<SettingWrite> TvSoftware::handleKey(const std::string& key, const SettingReader& read) {
    const std::optional<int32_t> digit = digitOf(key);
    const std::optional<Remote> remote = remoteOf(key);
    if (standby_) {
        standby_ = remote != Remote::Power;
        return {};
    }
    if (digit) {
        return tuneTo(*digit, read);
    }
    if (!remote) {
        return {};
    }
    const bool prompting = prompt_.isOpen(textOf(read(keys::kSessionCode)));
    switch (*remote) {
        case Remote::Power:
            dismissAll();
            displays_.hideAll();
            standby_ = true;
            return {};
        case Remote::VolumeUp:
            return stepVolume(Step::Forward, read);
        case Remote::VolumeDown:
            return stepVolume(Step::Back, read);
        case Remote::Mute:
            displays_.showVolume(now());
            return {{keys::kMute, Value{integerOf(read(keys::kMute)) == 0 ? 1 : 0}}};
        case Remote::Menu: {
            const bool wasOpen = menu_.isOpen();
            dismissAll();
            if (!wasOpen) {
                menu_.open();
            }
            return {};
        }
        case Remote::Exit:
            dismissAll();
            return {};
        case Remote::Back:
        case Remote::Ok:
            return handleConfirmation(*remote == Remote::Ok, prompting, read);
        case Remote::Up:
        case Remote::Down:
        case Remote::Left:
        case Remote::Right:
            return prompting ? std::vector<SettingWrite>{} : handleCursor(*remote, read);
        case Remote::ChannelUp:
            return stepChannel(Step::Forward, read);
        case Remote::ChannelDown:
            return stepChannel(Step::Back, read);
        case Remote::ChannelReturn:
            return previousChannel_ ? tuneTo(*previousChannel_, read) : std::vector<SettingWrite>{};
        case Remote::Input:
            menu_.close();
            return stepSource(read);
        case Remote::Info:
            if (displays_.banner(now()) == BannerKind::Info) {
                displays_.hideBanner();
            } else {
                displays_.showBanner(BannerKind::Info, now());
            }
            return {};
        case Remote::PictureMode:
            return stepItem(Menu::Item::PictureMode, BannerKind::PictureMode, read);
        case Remote::SoundMode:
            return stepItem(Menu::Item::SoundMode, BannerKind::SoundMode, read);
        case Remote::TvSource:
            menu_.close();
            displays_.showBanner(BannerKind::Source, now());
            return {{keys::kCurrentSource, Value{std::string(kTvSource)}}};
    }
    return {};
}

// OK and BACK close the dialog first, then act in the menu; with neither up, OK brings up the
// info banner and BACK takes down whatever banner is up.
std::vector<SettingWrite> TvSoftware::handleConfirmation(bool ok, bool prompting,
                                                         const SettingReader& read) {
    if (prompting) {
        prompt_.dismiss();
        return {};
    }
    if (menu_.isOpen()) {
        return handleMenuKey(ok ? MenuKey::Ok : MenuKey::Back, read);
    }
    if (ok) {
        displays_.showBanner(BannerKind::Info, now());
    } else {
        displays_.hideBanner();
    }
    return {};
}

// The arrows work the menu; with no menu up, up and down step through the channels.
std::vector<SettingWrite> TvSoftware::handleCursor(Remote remote, const SettingReader& read) {
    if (menu_.isOpen()) {
        return handleMenuKey(cursorKeyOf(remote), read);
    }
    if (remote == Remote::Up || remote == Remote::Down) {
        return stepChannel(remote == Remote::Up ? Step::Forward : Step::Back, read);
    }
    return {};
}

void TvSoftware::dismissAll() {
    menu_.close();
    prompt_.dismiss();
    displays_.hideBanner();
}

std::vector<SettingWrite> TvSoftware::handleMenuKey(MenuKey key, const SettingReader& read) {
    std::optional<SettingWrite> write = menu_.press(key, read);
    if (!write) {
        return {};
    }
    return {std::move(*write)};
}

std::vector<SettingWrite> TvSoftware::stepVolume(Step step, const SettingReader& read) {
    displays_.showVolume(now());
    const int32_t volume = std::clamp(integerOf(read(keys::kVolume)), 0, 100);
    std::vector<SettingWrite> writes = {
        {keys::kVolume, Value{std::clamp(volume + static_cast<int32_t>(step), 0, 100)}}};
    // A volume key ends muting, as on most TVs.
    if (integerOf(read(keys::kMute)) != 0) {
        writes.push_back({keys::kMute, Value{0}});
    }
    return writes;
}

const Channel* TvSoftware::currentChannel(const SettingReader& read) const {
    if (channels_.empty()) {
        return nullptr;
    }
    const int32_t number = integerOf(read(keys::kCurrentChannel));
    for (const Channel& channel : channels_) {
        if (channel.number == number) {
            return &channel;
        }
    }
    return &channels_.front();
}

std::vector<SettingWrite> TvSoftware::stepChannel(Step step, const SettingReader& read) {
    const Channel* current = currentChannel(read);
    if (current == nullptr || textOf(read(keys::kCurrentSource)) != kTvSource) {
        return {};
    }
    const auto count = static_cast<int64_t>(channels_.size());
    const int64_t index = current - channels_.data();
    const int64_t next = (index + static_cast<int64_t>(step) + count) % count;
    return tuneTo(channels_[static_cast<size_t>(next)].number, read);
}

std::vector<SettingWrite> TvSoftware::tuneTo(int32_t number, const SettingReader& read) {
    const Channel* current = currentChannel(read);
    const bool listed = std::any_of(channels_.begin(), channels_.end(),
                                    [number](const Channel& c) { return c.number == number; });
    if (current == nullptr || !listed || textOf(read(keys::kCurrentSource)) != kTvSource) {
        return {};
    }
    if (current->number != number) {
        previousChannel_ = current->number;
    }
    displays_.showBanner(BannerKind::Channel, now());
    return {{keys::kCurrentChannel, Value{number}}};
}

std::vector<SettingWrite> TvSoftware::stepSource(const SettingReader& read) {
    const auto sources = sourcePairs(read(keys::kSourceNames));
    if (sources.empty()) {
        return {};
    }
    const size_t index = indexOf(sources, textOf(read(keys::kCurrentSource)));
    const size_t next = index < sources.size() ? (index + 1) % sources.size() : 0;
    displays_.showBanner(BannerKind::Source, now());
    return {{keys::kCurrentSource, Value{sources[next].first}}};
}

std::vector<SettingWrite> TvSoftware::stepItem(Menu::Item item, BannerKind banner,
                                               const SettingReader& read) {
    displays_.showBanner(banner, now());
    std::optional<SettingWrite> write = Menu::change(item, 1, read);
    if (!write) {
        return {};
    }
    return {std::move(*write)};
}

void TvSoftware::settingChanged(const std::string& key, const Value& value) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (standby_) {
        return;
    }
    if (key == keys::kVolume || key == keys::kMute) {
        displays_.showVolume(now());
    } else if (key == keys::kCurrentSource) {
        displays_.showBanner(BannerKind::Source, now());
    } else if (key == keys::kCurrentChannel) {
        // Shown only while the TV source plays (see bannerView).
        displays_.showBanner(BannerKind::Channel, now());
    } else if (key == keys::kSessionCode) {
        prompt_.sessionCodeChanged(textOf(value));
    } else if (key == keys::kAppNotify) {
        if (integerOf(value) == kEngineerConnected) {
            prompt_.engineerConnected();
            displays_.showNotice(NoticeKind::EngineerConnected, now());
        } else if (integerOf(value) == kSessionEnded) {
            prompt_.sessionEnded();
            displays_.showNotice(NoticeKind::SessionEnded, now());
        }
    } else if (key == keys::kSupportEnable && integerOf(value) == kSupportOff) {
        prompt_.supportSwitchedOff();
    }
}

SourceView TvSoftware::sourceView(const SettingReader& read) const {
    SourceView source;
    source.source = textOf(read(keys::kCurrentSource));
    if (source.source == kTvSource) {
        if (const Channel* channel = currentChannel(read)) {
            source.kind = SourceView::Kind::Channel;
            source.channel = *channel;
        } else {
            source.message = texts_(Text::NoChannels);
        }
    } else if (std::optional<std::string> device =
                   cecDeviceOn(source.source, read(keys::kCecDevices))) {
        source.kind = SourceView::Kind::Device;
        source.device = std::move(*device);
    } else {
        source.message = texts_(Text::NoSignal);
    }
    return source;
}

std::vector<std::string> TvSoftware::infoDetails(const SettingReader& read) const {
    std::vector<std::string> details;
    const std::vector<std::string> format = listOf(read(keys::kVideoFormat));
    if (format.size() >= 4) {
        details.push_back(format[0] + "x" + format[1] + format[2] + " " + format[3] + "Hz");
    }
    for (const Menu::Item item : {Menu::Item::PictureMode, Menu::Item::SoundMode}) {
        const MenuRow row = Menu::row(item, read, texts_);
        details.push_back(row.label + ": " + row.value);
    }
    return details;
}

std::optional<BannerView> TvSoftware::bannerView(BannerKind kind, const SourceView& source,
                                                 const SettingReader& read) const {
    switch (kind) {
        case BannerKind::Channel:
            if (source.kind != SourceView::Kind::Channel) {
                return std::nullopt;
            }
            return ChannelBanner{source.channel};
        case BannerKind::Source: {
            SourceBanner banner;
            banner.title = texts_(Text::InputSource);
            banner.sources = sourcePairs(read(keys::kSourceNames));
            banner.current = indexOf(banner.sources, source.source);
            return banner;
        }
        case BannerKind::Info: {
            InfoBanner banner;
            banner.details = infoDetails(read);
            banner.title = source.source;
            if (source.kind == SourceView::Kind::Channel) {
                banner.title = std::to_string(source.channel.number) + "  " + source.channel.name;
                banner.subtitle = source.channel.programme;
            } else if (source.kind == SourceView::Kind::Device) {
                banner.subtitle = source.device;
            } else {
                banner.subtitle = source.message;
            }
            return banner;
        }
        case BannerKind::PictureMode:
        case BannerKind::SoundMode: {
            const MenuRow row = Menu::row(
                kind == BannerKind::PictureMode ? Menu::Item::PictureMode : Menu::Item::SoundMode,
                read, texts_);
            return SettingBanner{row.label, row.value};
        }
    }
    return std::nullopt;
}

ScreenView TvSoftware::view() const {
    const SettingMap current = settings();
    const SettingReader read = readerOf(current);
    std::lock_guard<std::mutex> lock(mutex_);
    ScreenView view;
    view.standby = standby_;
    if (standby_) {
        return view;
    }
    const SimulatedTime time = now();
    view.source = sourceView(read);
    const PictureAdjustments standard;
    view.picture.mode = storedOr(current, keys::kPictureMode, standard.mode);
    view.picture.brightness = storedOr(current, keys::kBrightness, standard.brightness);
    view.picture.contrast = storedOr(current, keys::kContrast, standard.contrast);
    view.picture.saturation = storedOr(current, keys::kColourSaturation, standard.saturation);
    view.picture.temperature = storedOr(current, keys::kColourTemperature, standard.temperature);
    if (const std::optional<BannerKind> banner = displays_.banner(time)) {
        view.banner = bannerView(*banner, view.source, read);
    }
    if (displays_.volumeShown(time)) {
        view.volume = VolumeView{std::clamp(integerOf(read(keys::kVolume)), 0, 100),
                                 integerOf(read(keys::kMute)) != 0, texts_(Text::Mute)};
    }
    view.menu = menu_.view(read, texts_);
    view.dialog = prompt_.dialog(textOf(read(keys::kSessionCode)), texts_);
    if (const std::optional<NoticeKind> notice = displays_.notice(time)) {
        view.notice = texts_(*notice == NoticeKind::EngineerConnected ? Text::EngineerConnected
                                                                      : Text::SessionEnded);
    }
    if (prompt_.connected()) {
        view.badge = texts_(Text::SupportActive);
    }
    return view;
}

}  // namespace tvsim
