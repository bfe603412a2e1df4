#include "Store.h"

#include <algorithm>

#include "tvmodelapi/Observer.h"

namespace tvsim {
namespace {

// How an observer hears of a change: integer observers of i32 keys and string observers of str
// keys; other pairings hear nothing.
Dispatcher::Delivery deliveryFor(tvmodelapi::Observer* observer, KeyType type, const Value& value) {
    if (type == KeyType::Int32) {
        if (auto* numeric = dynamic_cast<tvmodelapi::ObserverNumericInteger*>(observer)) {
            const int32_t number = std::get<int32_t>(value);
            return [numeric, number] { numeric->onChange(number); };
        }
    } else if (type == KeyType::String) {
        if (auto* text = dynamic_cast<tvmodelapi::ObserverString*>(observer)) {
            return [text, changed = textOf(value)] { text->onChange(changed); };
        }
    }
    return nullptr;
}

}  // namespace

Value Store::get(const std::string& key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_.get(key);
}

bool Store::set(const std::string& key, const Value& value) {
    std::lock_guard<std::mutex> lock(mutex_);
    return putLocked(key, value);
}

void Store::setAll(const SettingMap& values) {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& [key, value] : values) {
        putLocked(key, value);
    }
}

SettingMap Store::snapshot(const std::string& prefix) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_.withPrefix(prefix);
}

void Store::restore(const SettingMap& baseline, const std::string& prefix) {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& [key, value] : settings_.targetsFor(baseline, prefix)) {
        putLocked(key, value);
    }
}

uint64_t Store::attach(const std::string& key, tvmodelapi::Observer* observer) {
    std::lock_guard<std::mutex> lock(mutex_);
    const uint64_t id = ++lastRegistration_;
    observers_.emplace(key, Registration{id, observer});
    return id;
}

void Store::detach(uint64_t registration) {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = std::find_if(observers_.begin(), observers_.end(), [&](const auto& entry) {
        return entry.second.id == registration;
    });
    if (found != observers_.end()) {
        observers_.erase(found);
        dispatcher_.discard(registration);
    }
}

size_t Store::observerCount(const std::string& key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return observers_.count(key);
}

void Store::clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    settings_.clear();
    observers_.clear();
    dispatcher_.discardAll();
}

bool Store::putLocked(const std::string& key, const Value& value) {
    const KeyType type = keyType(key);
    if (!fits(type, value)) {
        return false;
    }
    if (!settings_.put(key, value)) {
        return true;
    }
    if (listener_) {
        listener_(key, value);
    }
    const auto [first, last] = observers_.equal_range(key);
    for (auto it = first; it != last; ++it) {
        if (Dispatcher::Delivery delivery = deliveryFor(it->second.observer, type, value)) {
            dispatcher_.post(it->second.id, std::move(delivery));
        }
    }
    return true;
}

}  // namespace tvsim
