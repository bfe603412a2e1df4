// The model configuration files are real INI files below the TV's filesystem root.
#include "tvconfig/ConfigUtil.h"

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "Service.h"
#include "Text.h"

namespace tvConfig {
namespace {

// Callers name the section either bare or as it appears in the file, in brackets.
std::string bareSection(const std::string& section) {
    if (section.size() >= 2 && section.front() == '[' && section.back() == ']') {
        return section.substr(1, section.size() - 2);
    }
    return section;
}

}  // namespace

ConfigUtil& ConfigUtil::instance() {
    static ConfigUtil* const configUtil = new ConfigUtil();
    return *configUtil;
}

bool ConfigUtil::getIntValue(const std::string& file, const std::string& section,
                             const std::string& key, int32_t& value) {
    namespace pt = boost::property_tree;
    pt::ptree ini;
    try {
        pt::read_ini(tvsim::Service::instance().filesystem().resolve(file), ini);
    } catch (const pt::ini_parser_error&) {
        return false;
    }
    const auto sectionFound = ini.find(bareSection(section));
    if (sectionFound == ini.not_found()) {
        return false;
    }
    const auto keyFound = sectionFound->second.find(key);
    if (keyFound == sectionFound->second.not_found()) {
        return false;
    }
    const std::optional<int32_t> number = tvsim::parseInt32(keyFound->second.data());
    if (!number) {
        return false;
    }
    value = *number;
    return true;
}

}  // namespace tvConfig
