// A TV profile document, checked and turned into the TV's initial state.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Channel.h"
#include "Screen.h"
#include "Settings.h"

namespace tvsim {

struct ProfileFile {
    std::string path;  // on the TV, absolute
    std::string bytes;
};

struct Profile {
    SettingMap settings;
    std::vector<ProfileFile> files;
    int32_t screenWidth = kDefaultScreenWidth;
    int32_t screenHeight = kDefaultScreenHeight;
    std::vector<Channel> channels;
    // On-screen texts in the TV's language, by their names (OnScreenTexts::names()).
    std::map<std::string, std::string> texts;
};

// Throws ProfileError naming `sourceName`, the place and the problem.
Profile parseProfile(const std::string& text, const std::string& sourceName);

}  // namespace tvsim
