// The settings' values, without locking (Store adds that and the observers).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tvsim/TvSim.h"

namespace tvsim {

using SettingMap = std::map<std::string, Value>;

// A str setting read as text: a list reads as its elements joined with ",".
std::string textOf(const Value& value);
// A str setting read as a list: "" reads as no element, any other text as one.
std::vector<std::string> listOf(const Value& value);

class Settings {
public:
    // The stored value, or the default of the key's type when never set.
    Value get(const std::string& key) const;
    // Stores `value`; true when the key read differently before.
    bool put(const std::string& key, const Value& value);
    void clear() { values_.clear(); }
    // Every stored key that starts with `prefix`, with its value.
    SettingMap withPrefix(const std::string& prefix) const;
    // What the keys under `prefix` must be set to so that they read as in `baseline`: its value,
    // or the default for a key that `baseline` lacks.
    SettingMap targetsFor(const SettingMap& baseline, const std::string& prefix) const;

private:
    SettingMap values_;
};

}  // namespace tvsim
