// Faults a test arms on the simulated TV.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace tvsim {

class Faults {
public:
    void setProxyStartFails(bool fails);
    bool proxyStartFails() const;
    void setInterfaceReferenceFails(bool fails);
    bool interfaceReferenceFails() const;
    void setRootInterfaceNull(bool null);
    bool rootInterfaceNull() const;
    // Per key; 0 removes the fault.
    void setConnectStatus(const std::string& key, int32_t status);
    int32_t connectStatus(const std::string& key) const;
    void setWriteStatus(const std::string& key, int32_t status);
    int32_t writeStatus(const std::string& key) const;

    void clear();

private:
    using StatusMap = std::map<std::string, int32_t>;
    static void put(StatusMap& statuses, const std::string& key, int32_t status);
    static int32_t lookUp(const StatusMap& statuses, const std::string& key);

    mutable std::mutex mutex_;
    bool proxyStartFails_ = false;
    bool interfaceReferenceFails_ = false;
    bool rootInterfaceNull_ = false;
    StatusMap connectStatus_;
    StatusMap writeStatus_;
};

}  // namespace tvsim
