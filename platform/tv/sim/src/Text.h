// Reading numbers from the texts the TV is handed (action arguments, configuration values).
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

namespace tvsim {

// The whole text as a decimal 32-bit integer, or nothing.
inline std::optional<int32_t> parseInt32(const std::string& text) {
    int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

}  // namespace tvsim
