// The settings with their observers: every change that alters a value is handed to the
// dispatcher for each observer of its key, in the order the changes were made.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "Dispatcher.h"
#include "Settings.h"

namespace tvmodelapi {
class Observer;
}

namespace tvsim {

class Store {
public:
    // Hears every change of a value, by anyone, in the order the changes are made: it is called
    // with the store's lock held, so it must not use the store.
    using ChangeListener = std::function<void(const std::string& key, const Value& value)>;

    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    Value get(const std::string& key) const;
    // Stores a value that fits its key's type (false, and nothing stored, otherwise).
    bool set(const std::string& key, const Value& value);
    // Sets several keys in one step, so that no other change slips in between (values that do
    // not fit are skipped).
    void setAll(const SettingMap& values);
    SettingMap snapshot(const std::string& prefix) const;
    // Sets every key under `prefix` back to what it reads as in `baseline`.
    void restore(const SettingMap& baseline, const std::string& prefix);

    // Returns the registration's id (never 0).
    uint64_t attach(const std::string& key, tvmodelapi::Observer* observer);
    void detach(uint64_t registration);
    size_t observerCount(const std::string& key) const;

    // Forgets every value and observer; notifications not yet delivered are dropped.
    void clear();

    // Set once, before the store is used.
    void setChangeListener(ChangeListener listener) { listener_ = std::move(listener); }

    void waitUntilDelivered() { dispatcher_.waitUntilDelivered(); }
    void shutdown() { dispatcher_.shutdown(); }

private:
    struct Registration {
        uint64_t id;
        tvmodelapi::Observer* observer;
    };

    // Stores and queues the notifications; false when the value does not fit the key.
    bool putLocked(const std::string& key, const Value& value);

    mutable std::mutex mutex_;
    Settings settings_;
    std::multimap<std::string, Registration> observers_;  // per key in attach order
    uint64_t lastRegistration_ = 0;
    Dispatcher dispatcher_;
    ChangeListener listener_;
};

}  // namespace tvsim
