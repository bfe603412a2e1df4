// A TV channel as the TV's channel list holds it.
#pragma once

#include <cstdint>
#include <string>

namespace tvsim {

// How a channel's programme looks.
enum class ChannelLook { Studio, Landscape, Pitch, City, Bars };

struct Channel {
    int32_t number = 0;
    std::string name;
    std::string programme;
    ChannelLook look = ChannelLook::Studio;

    bool operator==(const Channel& other) const {
        return number == other.number && name == other.name && programme == other.programme &&
               look == other.look;
    }
};

}  // namespace tvsim
