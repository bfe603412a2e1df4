// A record that keeps only its newest entries, for the simulators' journals and logs: a long run
// that never asks for them must not grow without end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

namespace simcommon {

// Not synchronised: its owner guards it.
template <typename Entry>
class NewestEntries {
public:
    explicit NewestEntries(size_t capacity) : capacity_(capacity) {}

    // Once `capacity` entries are kept, each new one pushes the oldest out.
    void add(Entry entry) {
        if (entries_.size() >= capacity_) {
            entries_.pop_front();
            ++dropped_;
        }
        entries_.push_back(std::move(entry));
    }

    // The kept entries, oldest first, and how many were pushed out since the previous take;
    // leaves the record empty.
    std::vector<Entry> take(uint64_t* dropped = nullptr) {
        std::vector<Entry> taken(std::make_move_iterator(entries_.begin()),
                                 std::make_move_iterator(entries_.end()));
        if (dropped != nullptr) {
            *dropped = dropped_;
        }
        clear();
        return taken;
    }

    void clear() {
        entries_.clear();
        dropped_ = 0;
    }

    size_t capacity() const { return capacity_; }

private:
    size_t capacity_;
    std::deque<Entry> entries_;
    uint64_t dropped_ = 0;
};

}  // namespace simcommon
