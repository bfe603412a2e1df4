#include "Faults.h"

namespace tvsim {

void Faults::setProxyStartFails(bool fails) {
    std::lock_guard<std::mutex> lock(mutex_);
    proxyStartFails_ = fails;
}

bool Faults::proxyStartFails() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return proxyStartFails_;
}

void Faults::setInterfaceReferenceFails(bool fails) {
    std::lock_guard<std::mutex> lock(mutex_);
    interfaceReferenceFails_ = fails;
}

bool Faults::interfaceReferenceFails() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return interfaceReferenceFails_;
}

void Faults::setRootInterfaceNull(bool null) {
    std::lock_guard<std::mutex> lock(mutex_);
    rootInterfaceNull_ = null;
}

bool Faults::rootInterfaceNull() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return rootInterfaceNull_;
}

void Faults::setConnectStatus(const std::string& key, int32_t status) {
    std::lock_guard<std::mutex> lock(mutex_);
    put(connectStatus_, key, status);
}

int32_t Faults::connectStatus(const std::string& key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return lookUp(connectStatus_, key);
}

void Faults::setWriteStatus(const std::string& key, int32_t status) {
    std::lock_guard<std::mutex> lock(mutex_);
    put(writeStatus_, key, status);
}

int32_t Faults::writeStatus(const std::string& key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return lookUp(writeStatus_, key);
}

void Faults::clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    proxyStartFails_ = false;
    interfaceReferenceFails_ = false;
    rootInterfaceNull_ = false;
    connectStatus_.clear();
    writeStatus_.clear();
}

void Faults::put(StatusMap& statuses, const std::string& key, int32_t status) {
    if (status == 0) {
        statuses.erase(key);
    } else {
        statuses[key] = status;
    }
}

int32_t Faults::lookUp(const StatusMap& statuses, const std::string& key) {
    const auto found = statuses.find(key);
    return found == statuses.end() ? 0 : found->second;
}

}  // namespace tvsim
