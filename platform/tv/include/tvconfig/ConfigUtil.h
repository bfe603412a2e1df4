// Reads the TV model's configuration files (INI: [Section] key=value).
#pragma once

#include <cstdint>
#include <string>

namespace tvConfig {

class ConfigUtil {
public:
    static ConfigUtil& instance();

    // Reads an integer value; false when the file, section or key is missing or the value is not
    // an integer (then `value` is left as it was).
    bool getIntValue(const std::string& file, const std::string& section, const std::string& key,
                     int32_t& value);

private:
    ConfigUtil() = default;
};

}  // namespace tvConfig
