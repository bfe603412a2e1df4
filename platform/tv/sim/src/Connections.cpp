#include "Connections.h"

#include <algorithm>

namespace tvsim {

Connections::ValueHandle* Connections::add(std::unique_ptr<ValueHandle> handle,
                                           uint64_t registration) {
    std::lock_guard<std::mutex> lock(mutex_);
    ValueHandle* const raw = handle.get();
    connections_.emplace(raw, Connection{std::move(handle), registration, generation_});
    return raw;
}

std::optional<uint64_t> Connections::remove(ValueHandle* handle) {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = connections_.find(handle);
    if (found == connections_.end()) {
        return std::nullopt;
    }
    const uint64_t registration = found->second.registration;
    connections_.erase(found);
    return registration;
}

int64_t Connections::openCount() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return std::count_if(connections_.begin(), connections_.end(), [this](const auto& entry) {
        return entry.second.generation == generation_;
    });
}

void Connections::forgetAll() {
    std::lock_guard<std::mutex> lock(mutex_);
    ++generation_;
}

}  // namespace tvsim
