#include "TraceRing.h"

#include <algorithm>
#include <iterator>

namespace zelsim {
namespace detail {

namespace {

const char* orEmpty(const char* text) {
    return text ? text : "";
}

}  // namespace

TraceRing::TraceRing(size_t capacity) : capacity_(capacity) {}

void TraceRing::record(bool enter, const char* function, const char* sourceUnit, int32_t line) {
    if (slots_.size() < capacity_) {
        slots_.push_back(TraceEvent{enter, orEmpty(function), orEmpty(sourceUnit), line});
        next_ = slots_.size() % capacity_;
        return;
    }
    TraceEvent& slot = slots_[next_];
    slot.enter = enter;
    slot.function.assign(orEmpty(function));  // keeps the slot's capacity
    slot.sourceUnit.assign(orEmpty(sourceUnit));
    slot.line = line;
    next_ = (next_ + 1) % capacity_;
}

std::vector<TraceEvent> TraceRing::take() {
    std::vector<TraceEvent> events;
    events.reserve(slots_.size());
    const auto oldest = slots_.begin() + static_cast<std::ptrdiff_t>(next_);
    std::move(oldest, slots_.end(), std::back_inserter(events));
    std::move(slots_.begin(), oldest, std::back_inserter(events));
    clear();
    return events;
}

void TraceRing::clear() {
    slots_.clear();
    next_ = 0;
}

}  // namespace detail
}  // namespace zelsim
