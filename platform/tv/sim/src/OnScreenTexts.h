// The words the TV shows on screen, in its on-screen language: English unless a profile gives
// its own wording for some of them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tvsim {

enum class Text {
    NoSignal,
    NoChannels,
    Settings,
    InputSource,
    PictureMode,
    SoundMode,
    Volume,
    Mute,
    PictureSettings,
    Brightness,
    Contrast,
    Colour,
    ColourTemperature,
    RemoteSupport,
    GetSessionCode,
    On,
    Off,
    Vivid,
    Standard,
    EnergySaving,
    Theater,
    Game,
    Sports,
    Calibrated,
    Speech,
    LateNight,
    Music,
    TemperatureHigh,
    TemperatureMedium,
    TemperatureLow,
    TemperatureMidLow,
    MenuHint,
    SessionCodeIntro,
    SessionCodeHint,
    GettingSessionCode,
    NetworkError,
    ServerError,
    ConnectedAlready,
    EngineerConnected,
    SessionEnded,
    SupportActive,
    DialogHint,
};

class OnScreenTexts {
public:
    // Longest wording a profile may give one text.
    static constexpr size_t kLongestText = 200;

    // The name a profile uses for each text ("noSignal"), in the order of Text.
    static const std::vector<std::string>& names();
    static bool isName(const std::string& name);

    // Replaces the wording of the named texts (names must be known); the others stay English.
    void setWordings(const std::map<std::string, std::string>& wordings);
    const std::string& operator()(Text text) const;

private:
    std::map<Text, std::string> wordings_;
};

}  // namespace tvsim
