// Every write and action the plug-in made, in order; the newest kJournalCapacity are kept.
#pragma once

#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

#include "NewestEntries.h"
#include "tvsim/TvSim.h"

namespace tvsim {

class Journal {
public:
    void append(JournalEntry entry) {
        std::lock_guard<std::mutex> lock(mutex_);
        entries_.add(std::move(entry));
    }

    std::vector<JournalEntry> take(uint64_t* dropped = nullptr) {
        std::lock_guard<std::mutex> lock(mutex_);
        return entries_.take(dropped);
    }

private:
    std::mutex mutex_;
    simcommon::NewestEntries<JournalEntry> entries_{kJournalCapacity};
};

}  // namespace tvsim
