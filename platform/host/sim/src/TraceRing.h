// The most recent function traces. Slots are reused once full so that tracing a long run costs
// neither growing memory nor, after warm-up, allocations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelsim/HostSim.h"

namespace zelsim {
namespace detail {

class TraceRing {
public:
    explicit TraceRing(size_t capacity);

    void record(bool enter, const char* function, const char* sourceUnit, int32_t line);
    // Oldest first; leaves the ring empty.
    std::vector<TraceEvent> take();
    void clear();

private:
    size_t capacity_;
    std::vector<TraceEvent> slots_;
    size_t next_ = 0;  // slot the next event goes to once the ring is full
};

}  // namespace detail
}  // namespace zelsim
