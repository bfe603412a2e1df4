// A TV profile document, checked and turned into the TV's initial state.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

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
};

// Throws ProfileError naming `sourceName`, the place and the problem.
Profile parseProfile(const std::string& text, const std::string& sourceName);

}  // namespace tvsim
