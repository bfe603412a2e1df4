#include "Service.h"

#include <cstdlib>

#include "Reactions.h"
#include "SettingHandle.h"
#include "Status.h"

namespace tvsim {

Service& Service::instance() {
    static Service* const service = new Service();
    return *service;
}

Service::Service() {
    store_.setChangeListener([this](const std::string& key, const Value& value) {
        software_.settingChanged(key, value);
    });
    // The service outlives static destruction; only its thread is ended at exit, so that no
    // notification runs while the process tears down.
    std::atexit([] { Service::instance().store().shutdown(); });
}

void Service::reset() {
    store_.clear();
    faults_.clear();
    journal_.take();
    connections_.forgetAll();
    screen_.reset();
    software_.reset();
    {
        std::lock_guard<std::mutex> lock(mutex_);
        actionHandlers_.clear();
        profileValues_.clear();
        backup_.clear();
        backedUp_ = false;
    }
    debugInitCalls_ = 0;
    proxyStarts_ = 0;
    connectCalls_ = 0;
}

void Service::loadProfile(const Profile& profile, const std::string& sourceName) {
    reset();
    store_.setAll(profile.settings);
    // Switched on afresh: what loading the settings showed is gone.
    software_.configure(profile.channels, profile.texts);
    {
        std::lock_guard<std::mutex> lock(mutex_);
        profileValues_ = profile.settings;
    }
    screen_.setSize(profile.screenWidth, profile.screenHeight);
    if (filesystem_.root().empty()) {
        return;  // no folder of its own to put the files in
    }
    for (const ProfileFile& file : profile.files) {
        std::string problem;
        if (!filesystem_.writeFile(file.path, file.bytes.data(), file.bytes.size(), problem)) {
            throw ProfileError(sourceName + ": files.\"" + file.path +
                               "\": cannot write it: " + problem);
        }
    }
}

void Service::setActionHandler(const std::string& key, ActionHandler handler) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (handler) {
        actionHandlers_[key] = std::move(handler);
    } else {
        actionHandlers_.erase(key);
    }
}

int32_t Service::connect(const std::string& key, tvmodelapi::Observer* observer,
                         marlo::lm::interfaces::tvapi::ValueHandle*& handle) {
    ++connectCalls_;
    handle = nullptr;
    if (keyType(key) == KeyType::Invalid) {
        return status::kMalformedKey;
    }
    const int32_t connectStatus = faults_.connectStatus(key);
    if (connectStatus < 0) {
        return connectStatus;
    }
    const uint64_t registration = observer == nullptr ? 0 : store_.attach(key, observer);
    handle = connections_.add(std::make_unique<SettingHandle>(*this, key), registration);
    return connectStatus;
}

void Service::disconnect(marlo::lm::interfaces::tvapi::ValueHandle* handle) {
    const std::optional<uint64_t> registration = connections_.remove(handle);
    if (registration && *registration != 0) {
        store_.detach(*registration);
    }
}

int32_t Service::write(const std::string& key, const Value& value) {
    JournalEntry entry;
    entry.kind = JournalEntry::Kind::Write;
    entry.key = key;
    entry.value = value;
    entry.status = fits(keyType(key), value) ? faults_.writeStatus(key) : status::kWrongType;
    const int32_t result = entry.status;
    // Journaled before it takes effect, so that whoever sees the effect finds the entry.
    journal_.append(std::move(entry));
    if (result == status::kOk) {
        store_.set(key, value);
        reactToWrite(*this, key, value);
    }
    return result;
}

int32_t Service::act(const std::string& key, ParameterList& reply, const ParameterList& arguments) {
    int32_t result =
        keyType(key) == KeyType::Action ? faults_.writeStatus(key) : status::kWrongType;
    if (result == status::kOk) {
        // Runs unlocked: a handler may well change settings or set up other handlers.
        if (const ActionHandler handler = actionHandlerFor(key)) {
            result = handler(arguments, reply);
        }
    }
    JournalEntry entry;
    entry.kind = JournalEntry::Kind::Action;
    entry.key = key;
    entry.arguments = arguments;
    entry.status = result;
    journal_.append(std::move(entry));
    return result;
}

void Service::restoreProfileValues(const std::string& prefix) {
    SettingMap baseline;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        baseline = profileValues_;
    }
    store_.restore(baseline, prefix);
}

void Service::backUp(const std::vector<std::string>& prefixes) {
    SettingMap backup;
    for (const std::string& prefix : prefixes) {
        backup.merge(store_.snapshot(prefix));
    }
    std::lock_guard<std::mutex> lock(mutex_);
    backup_ = std::move(backup);
    backedUp_ = true;
}

bool Service::restoreBackup(const std::string& prefix) {
    SettingMap backup;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!backedUp_) {
            return false;
        }
        backup = backup_;
    }
    store_.restore(backup, prefix);
    return true;
}

bool Service::captureScreen(const std::string& tvPath) {
    const std::shared_ptr<const Picture> picture = screen_.capture(software_.view());
    if (!picture) {
        return true;
    }
    std::string problem;
    return filesystem_.writeFile(tvPath, picture->data(), picture->size(), problem);
}

ActionHandler Service::actionHandlerFor(const std::string& key) {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        const auto found = actionHandlers_.find(key);
        if (found != actionHandlers_.end()) {
            return found->second;
        }
    }
    return builtInActionHandler(*this, key);
}

}  // namespace tvsim
