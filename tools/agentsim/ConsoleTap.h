// Takes over the process's standard output so that what the plug-in prints (its console log)
// can be shown or reported separately from agentsim's own output.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace agentsim {

class ConsoleTap {
public:
    ConsoleTap();
    ~ConsoleTap();
    ConsoleTap(const ConsoleTap&) = delete;
    ConsoleTap& operator=(const ConsoleTap&) = delete;

    // agentsim's own output: the real standard output.
    std::FILE* out() const { return out_; }

    // The texts of the console-log calls made since the previous take, framing included.
    std::vector<std::string> takeLines();

private:
    std::FILE* out_ = nullptr;
    int captureFile_ = -1;
    long offset_ = 0;
    std::string pending_;
};

}  // namespace agentsim
