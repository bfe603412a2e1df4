// Reaching the simulated TV the way the plug-in does, and observers that record what they hear.
#pragma once

#include <gtest/gtest.h>

#include <boost/shared_ptr.hpp>

#include <mutex>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "frame/Process.h"
#include "marlo/tvapi/RootInterface.h"
#include "support/SimulatedPlatform.h"
#include "tvmodelapi/Observer.h"

namespace tvtest {

using marlo::lm::interfaces::tvapi::ParameterList;
using marlo::lm::interfaces::tvapi::RootInterface;
using marlo::lm::interfaces::tvapi::ValueHandle;

constexpr char kSettingsServiceName[] = "marlo.lm.interfaces.tvapi.RootInterface";

// Starts the proxy and looks the settings service up; null when either fails.
inline RootInterface* settingsService() {
    if (frame::Process::getInstance().startAppMembersSync(CreateBizProxy) != 0) {
        return nullptr;
    }
    boost::shared_ptr<frame::Interface> reference;
    if (frame::Process::getInstance().getInterfaceReference(reference, kSettingsServiceName) != 0) {
        return nullptr;
    }
    return reference->get<RootInterface>();
}

// Connects a key that must connect.
inline ValueHandle* connect(const std::string& key, tvmodelapi::Observer* observer = nullptr) {
    ValueHandle* handle = nullptr;
    RootInterface* service = settingsService();
    EXPECT_NE(service, nullptr);
    if (service != nullptr) {
        EXPECT_EQ(service->connect(key, observer, handle), 0) << key;
    }
    return handle;
}

// Arguments at positions 0, 1, ... of an action.
inline ParameterList arguments(const std::vector<std::string>& values) {
    ParameterList list;
    for (size_t i = 0; i < values.size(); ++i) {
        list.push_back(
            {marlo::lm::interfaces::tvapi::parameterTag(static_cast<int32_t>(i)), values[i]});
    }
    return list;
}

inline int32_t runAction(const std::string& key, const std::vector<std::string>& values = {}) {
    ParameterList reply;
    return connect(key)->onAction(reply, arguments(values));
}

// What an observer heard and on which threads.
template <typename Base, typename Heard>
class Recorder : public Base {
public:
    void onChange(typename std::conditional<std::is_same<Heard, std::string>::value,
                                            const std::string&, int32_t>::type value) override {
        std::lock_guard<std::mutex> lock(mutex_);
        heard_.push_back(value);
        threads_.push_back(std::this_thread::get_id());
    }
    void onDisconnected() override {}

    std::vector<Heard> heard() const {
        std::lock_guard<std::mutex> lock(mutex_);
        return heard_;
    }
    std::vector<std::thread::id> threads() const {
        std::lock_guard<std::mutex> lock(mutex_);
        return threads_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<Heard> heard_;
    std::vector<std::thread::id> threads_;
};

using IntRecorder = Recorder<tvmodelapi::ObserverNumericInteger, int32_t>;
using StringRecorder = Recorder<tvmodelapi::ObserverString, std::string>;

// A fresh TV with a temporary root for each test.
class TvTest : public ::testing::Test {
protected:
    tvsim::Tv& tv() { return platform_.tv(); }
    const std::string& root() const { return platform_.root(); }

private:
    testing_support::SimulatedPlatform platform_;
};

}  // namespace tvtest
