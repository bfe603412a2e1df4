// The middleware entry points the plug-in calls: debug set-up, the process framework and the
// settings service it publishes.
#include <boost/make_shared.hpp>

#include "Service.h"
#include "Status.h"
#include "csp/cspDebug.h"
#include "frame/Process.h"
#include "marlo/tvapi/RootInterface.h"

namespace tvsim {
namespace {

using marlo::lm::interfaces::tvapi::RootInterface;
using marlo::lm::interfaces::tvapi::ValueHandle;

constexpr char kSettingsServiceName[] = "marlo.lm.interfaces.tvapi.RootInterface";

class SettingsService : public RootInterface {
public:
    int32_t connect(const std::string& key, tvmodelapi::Observer* observer,
                    ValueHandle*& handle) override {
        return Service::instance().connect(key, observer, handle);
    }

    void disconnect(const std::string& /*key*/, int32_t /*status*/, ValueHandle* handle) override {
        Service::instance().disconnect(handle);
    }
};

// Lives as long as the process: the plug-in keeps the pointer.
SettingsService& settingsService() {
    static SettingsService* const service = new SettingsService();
    return *service;
}

class SettingsServiceReference : public frame::Interface {
protected:
    void* servicePointer() override {
        if (Service::instance().faults().rootInterfaceNull()) {
            return nullptr;
        }
        return static_cast<RootInterface*>(&settingsService());
    }
};

}  // namespace
}  // namespace tvsim

extern "C" void cspDebugInit(void) {
    tvsim::Service::instance().countDebugInit();
}

// The business proxy's members, null-terminated: the settings service is the only one.
extern "C" void** CreateBizProxy() {
    static void* members[] = {
        static_cast<marlo::lm::interfaces::tvapi::RootInterface*>(&tvsim::settingsService()),
        nullptr};
    return members;
}

namespace frame {

Process Process::getInstance() {
    return Process();
}

Process::~Process() = default;

int Process::startAppMembersSync(MemberFactory factory) {
    tvsim::Service& service = tvsim::Service::instance();
    service.countProxyStart();
    if (service.faults().proxyStartFails() || factory == nullptr || factory() == nullptr) {
        return tvsim::status::kFailed;
    }
    return tvsim::status::kOk;
}

int Process::getInterfaceReference(boost::shared_ptr<Interface>& reference,
                                   const std::string& name) {
    if (tvsim::Service::instance().faults().interfaceReferenceFails() ||
        name != tvsim::kSettingsServiceName) {
        return tvsim::status::kFailed;
    }
    reference = boost::make_shared<tvsim::SettingsServiceReference>();
    return tvsim::status::kOk;
}

}  // namespace frame
