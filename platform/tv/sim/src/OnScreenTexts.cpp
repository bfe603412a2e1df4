#include "OnScreenTexts.h"

#include <algorithm>

namespace tvsim {
namespace {

struct Entry {
    Text text;
    const char* name;
    const char* english;
};

constexpr Entry kEntries[] = {
    {Text::NoSignal, "noSignal", "No Signal"},
    {Text::NoChannels, "noChannels", "No channels found"},
    {Text::Settings, "settings", "Settings"},
    {Text::InputSource, "inputSource", "Input Source"},
    {Text::PictureMode, "pictureMode", "Picture Mode"},
    {Text::SoundMode, "soundMode", "Sound Mode"},
    {Text::Volume, "volume", "Volume"},
    {Text::Mute, "mute", "Mute"},
    {Text::PictureSettings, "pictureSettings", "Picture Settings"},
    {Text::Brightness, "brightness", "Brightness"},
    {Text::Contrast, "contrast", "Contrast"},
    {Text::Colour, "colour", "Colour"},
    {Text::ColourTemperature, "colourTemperature", "Colour Temperature"},
    {Text::RemoteSupport, "remoteSupport", "Remote Support"},
    {Text::GetSessionCode, "getSessionCode", "Get Session Code"},
    {Text::On, "on", "On"},
    {Text::Off, "off", "Off"},
    {Text::Vivid, "vivid", "Vivid"},
    {Text::Standard, "standard", "Standard"},
    {Text::EnergySaving, "energySaving", "Energy Saving"},
    {Text::Theater, "theater", "Theater"},
    {Text::Game, "game", "Game"},
    {Text::Sports, "sports", "Sports"},
    {Text::Calibrated, "calibrated", "Calibrated"},
    {Text::Speech, "speech", "Speech"},
    {Text::LateNight, "lateNight", "Late Night"},
    {Text::Music, "music", "Music"},
    {Text::TemperatureHigh, "temperatureHigh", "High"},
    {Text::TemperatureMedium, "temperatureMedium", "Medium"},
    {Text::TemperatureLow, "temperatureLow", "Low"},
    {Text::TemperatureMidLow, "temperatureMidLow", "Mid-Low"},
    {Text::MenuHint, "menuHint", "OK Select    BACK Return    EXIT Close"},
    {Text::SessionCodeIntro, "sessionCodeIntro", "Your session code:"},
    {Text::SessionCodeHint, "sessionCodeHint",
     "Tell this code to the support engineer. It is valid for two minutes."},
    {Text::GettingSessionCode, "gettingSessionCode", "Getting a session code..."},
    {Text::NetworkError, "networkError",
     "The TV cannot reach the support service. Check the network connection and try again."},
    {Text::ServerError, "serverError",
     "The support service is not available at the moment. Please try again later."},
    {Text::ConnectedAlready, "connectedAlready",
     "A support engineer is already connected to this TV."},
    {Text::EngineerConnected, "engineerConnected",
     "A support engineer is now connected to your TV."},
    {Text::SessionEnded, "sessionEnded", "The remote support session has ended."},
    {Text::SupportActive, "supportActive", "Remote support"},
    {Text::DialogHint, "dialogHint", "OK Close"},
};

const std::string& englishWording(Text text) {
    static const std::map<Text, std::string>* const english = [] {
        auto* wordings = new std::map<Text, std::string>();
        for (const Entry& entry : kEntries) {
            (*wordings)[entry.text] = entry.english;
        }
        return wordings;
    }();
    return english->at(text);
}

}  // namespace

const std::vector<std::string>& OnScreenTexts::names() {
    static const std::vector<std::string>* const all = [] {
        auto* list = new std::vector<std::string>();
        for (const Entry& entry : kEntries) {
            list->push_back(entry.name);
        }
        return list;
    }();
    return *all;
}

bool OnScreenTexts::isName(const std::string& name) {
    const std::vector<std::string>& all = names();
    return std::find(all.begin(), all.end(), name) != all.end();
}

void OnScreenTexts::setWordings(const std::map<std::string, std::string>& wordings) {
    wordings_.clear();
    for (const Entry& entry : kEntries) {
        const auto found = wordings.find(entry.name);
        if (found != wordings.end()) {
            wordings_[entry.text] = found->second;
        }
    }
}

const std::string& OnScreenTexts::operator()(Text text) const {
    const auto own = wordings_.find(text);
    return own != wordings_.end() ? own->second : englishWording(text);
}

}  // namespace tvsim
