#include "Settings.h"

#include <boost/algorithm/string/join.hpp>

namespace tvsim {
namespace {

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

void addWithPrefix(const SettingMap& from, const std::string& prefix, SettingMap& to) {
    for (auto it = from.lower_bound(prefix); it != from.end() && startsWith(it->first, prefix);
         ++it) {
        to.insert(*it);
    }
}

}  // namespace

std::string textOf(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* list = std::get_if<std::vector<std::string>>(&value)) {
        return boost::algorithm::join(*list, ",");
    }
    return std::string();
}

std::vector<std::string> listOf(const Value& value) {
    if (const auto* list = std::get_if<std::vector<std::string>>(&value)) {
        return *list;
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr || text->empty()) {
        return {};
    }
    return {*text};
}

Value Settings::get(const std::string& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? defaultValue(keyType(key)) : found->second;
}

bool Settings::put(const std::string& key, const Value& value) {
    const bool changed = get(key) != value;
    values_[key] = value;
    return changed;
}

SettingMap Settings::withPrefix(const std::string& prefix) const {
    SettingMap found;
    addWithPrefix(values_, prefix, found);
    return found;
}

SettingMap Settings::targetsFor(const SettingMap& baseline, const std::string& prefix) const {
    SettingMap targets;
    addWithPrefix(baseline, prefix, targets);
    for (const auto& stored : withPrefix(prefix)) {
        targets.emplace(stored.first, defaultValue(keyType(stored.first)));
    }
    return targets;
}

}  // namespace tvsim
