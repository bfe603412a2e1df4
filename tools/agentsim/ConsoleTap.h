// Takes over the process's standard output so that what the plug-in prints (its console log)
// can be shown or reported separately from agentsim's own output.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "NewestEntries.h"

namespace agentsim {

class ConsoleTap {
public:
    // The newest lines kept between takes; older ones are dropped and counted.
    static constexpr size_t kKeptLines = 10000;

    ConsoleTap();
    ~ConsoleTap();
    ConsoleTap(const ConsoleTap&) = delete;
    ConsoleTap& operator=(const ConsoleTap&) = delete;

    // agentsim's own output: the real standard output.
    std::FILE* out() const { return out_; }

    // Moves what the plug-in printed since the previous call into the kept lines; the capture
    // file starts afresh once it has grown, so a long run stays small.
    void collect();
    // The texts of the console-log calls made since the previous take, framing included: the
    // newest kKeptLines, and in `dropped` (when given) how many older ones were not kept.
    std::vector<std::string> takeLines(uint64_t* dropped = nullptr);

private:
    std::FILE* out_ = nullptr;
    int captureFile_ = -1;
    off_t offset_ = 0;
    std::string pending_;
    simcommon::NewestEntries<std::string> lines_{kKeptLines};
};

}  // namespace agentsim
