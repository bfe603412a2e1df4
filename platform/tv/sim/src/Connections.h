// The value handles the settings service has handed out and not yet taken back.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "marlo/tvapi/RootInterface.h"

namespace tvsim {

class Connections {
public:
    using ValueHandle = marlo::lm::interfaces::tvapi::ValueHandle;

    // Keeps the handle until it is removed; `registration` is its observer's (0 for none).
    ValueHandle* add(std::unique_ptr<ValueHandle> handle, uint64_t registration);
    // Releases the handle; its observer registration, or nothing for a handle never handed out.
    std::optional<uint64_t> remove(ValueHandle* handle);
    int64_t openCount() const;
    // Handles already handed out stay usable (their holders may still call them) but no longer
    // count as open.
    void forgetAll();

private:
    struct Connection {
        std::unique_ptr<ValueHandle> handle;
        uint64_t registration;
        uint64_t generation;
    };

    mutable std::mutex mutex_;
    std::map<ValueHandle*, Connection> connections_;
    uint64_t generation_ = 0;
};

}  // namespace tvsim
