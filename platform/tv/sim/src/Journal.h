// Every write and action the plug-in made, in order.
#pragma once

#include <mutex>
#include <utility>
#include <vector>

#include "tvsim/TvSim.h"

namespace tvsim {

class Journal {
public:
    void append(JournalEntry entry) {
        std::lock_guard<std::mutex> lock(mutex_);
        entries_.push_back(std::move(entry));
    }

    std::vector<JournalEntry> take() {
        std::lock_guard<std::mutex> lock(mutex_);
        return std::exchange(entries_, {});
    }

private:
    std::mutex mutex_;
    std::vector<JournalEntry> entries_;
};

}  // namespace tvsim
