// Shows that agentsim is waiting: one self-updating line on a terminal, plain lines otherwise.
#pragma once

#include <cstdio>
#include <string>

namespace agentsim {

class Progress {
public:
    Progress(std::FILE* out, std::string what);
    ~Progress();
    // Another step of the wait.
    void tick(const std::string& detail);
    void done(const std::string& outcome);

private:
    std::FILE* out_;
    std::string what_;
    bool terminal_;
    bool finished_ = false;
    int ticks_ = 0;
};

}  // namespace agentsim
