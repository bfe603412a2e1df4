// The simulated TV's middleware state, shared by the control API (Tv) and the middleware
// interfaces the plug-in calls. One per process, never destroyed: the plug-in's observers and
// handles live until the process ends.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Connections.h"
#include "Faults.h"
#include "Filesystem.h"
#include "Journal.h"
#include "Profile.h"
#include "ScaledClock.h"
#include "Screen.h"
#include "Store.h"
#include "TvSoftware.h"

namespace tvsim {

class Service {
public:
    static Service& instance();

    Store& store() { return store_; }
    Faults& faults() { return faults_; }
    Journal& journal() { return journal_; }
    Screen& screen() { return screen_; }
    Filesystem& filesystem() { return filesystem_; }
    ScaledClock& clock() { return clock_; }
    TvSoftware& software() { return software_; }

    // Everything back to a TV that was never set up, except the filesystem root and the time
    // scale.
    void reset();
    // Resets, then takes the profile's settings (remembered for the TV's own resets), screen
    // and files. Throws ProfileError when a file cannot be written.
    void loadProfile(const Profile& profile, const std::string& sourceName);
    void setActionHandler(const std::string& key, ActionHandler handler);

    // --- The middleware as the plug-in calls it ---
    void countDebugInit() { ++debugInitCalls_; }
    void countProxyStart() { ++proxyStarts_; }
    int32_t connect(const std::string& key, tvmodelapi::Observer* observer,
                    marlo::lm::interfaces::tvapi::ValueHandle*& handle);
    void disconnect(marlo::lm::interfaces::tvapi::ValueHandle* handle);
    // A value handle's write: journaled, then stored unless refused.
    int32_t write(const std::string& key, const Value& value);
    // A value handle's action: journaled with the status of the TV's reaction.
    int32_t act(const std::string& key, ParameterList& reply, const ParameterList& arguments);

    int32_t debugInitCalls() const { return debugInitCalls_; }
    int32_t proxyStarts() const { return proxyStarts_; }
    int64_t connectCalls() const { return connectCalls_; }
    int64_t openHandles() const { return connections_.openCount(); }

    // --- What the TV's own reactions do ---
    // Every key under `prefix` back to the profile's value (or its default).
    void restoreProfileValues(const std::string& prefix);
    // The settings under `prefixes`, kept until the next backup or reset.
    void backUp(const std::vector<std::string>& prefixes);
    // False when nothing was backed up.
    bool restoreBackup(const std::string& prefix);
    // Writes a capture of what the screen shows now to a TV path (nothing while capture is off).
    bool captureScreen(const std::string& tvPath);

private:
    Service();
    ActionHandler actionHandlerFor(const std::string& key);

    Store store_;
    Faults faults_;
    Journal journal_;
    Connections connections_;
    Screen screen_;
    Filesystem filesystem_;
    ScaledClock clock_;
    TvSoftware software_{store_, clock_};

    mutable std::mutex mutex_;  // guards the members below
    std::map<std::string, ActionHandler> actionHandlers_;
    SettingMap profileValues_;
    SettingMap backup_;
    bool backedUp_ = false;

    std::atomic<int32_t> debugInitCalls_{0};
    std::atomic<int32_t> proxyStarts_{0};
    std::atomic<int64_t> connectCalls_{0};
};

}  // namespace tvsim
