#include <mutex>

#include "ResetParts.h"
#include "zel/sv/CommandManager.h"
#include "zel/sv/SupportViewManager.h"
#include "zel/sv/Time.h"
#include "zelsim/HostSim.h"

namespace {

struct IdentityState {
    std::mutex mutex;
    zelsim::Identity identity;
};

// Never destroyed: the plug-in's threads may still ask while the process exits.
IdentityState& state() {
    static IdentityState* const instance = new IdentityState;
    return *instance;
}

}  // namespace

namespace zelsim {

Identity identity() {
    IdentityState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    return current.identity;
}

void setIdentity(const Identity& identity) {
    IdentityState& current = state();
    std::lock_guard<std::mutex> lock(current.mutex);
    current.identity = identity;
}

namespace detail {

void resetIdentity() {
    setIdentity(Identity{});
}

}  // namespace detail
}  // namespace zelsim

namespace Zel {
namespace Sv {

CommandManager& CommandManager::Instance() {
    static CommandManager* const instance = new CommandManager;
    return *instance;
}

std::string CommandManager::getOpid() const {
    return zelsim::identity().opid;
}

std::string CommandManager::getId() const {
    return zelsim::identity().id;
}

std::string CommandManager::getEsn() const {
    return zelsim::identity().esn;
}

std::string CommandManager::getBrand() const {
    return zelsim::identity().brand;
}

SupportViewManager& SupportViewManager::Instance() {
    static SupportViewManager* const instance = new SupportViewManager;
    return *instance;
}

int32_t SupportViewManager::runSpeedTest(double& up, double& down) {
    const zelsim::Identity current = zelsim::identity();
    if (current.speedResult == 0) {
        up = current.speedUp;
        down = current.speedDown;
    }
    return current.speedResult;
}

std::string Time::GetCurrentDateTime() {
    return zelsim::identity().date;
}

int64_t Time::GetUptime() {
    return zelsim::identity().uptime;
}

}  // namespace Sv
}  // namespace Zel
