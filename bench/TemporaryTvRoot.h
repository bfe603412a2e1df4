// The simulated TV's filesystem in a fresh temporary folder, removed with this object.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "tvsim/TvSim.h"

class TemporaryTvRoot {
public:
    TemporaryTvRoot() {
        char pattern[] = "/tmp/norvane-bench-XXXXXX";
        if (mkdtemp(pattern) == nullptr) {
            throw std::runtime_error("cannot create the TV root");
        }
        path_ = pattern;
        tvsim::Tv::instance().setFilesystemRoot(path_);
    }
    ~TemporaryTvRoot() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryTvRoot(const TemporaryTvRoot&) = delete;
    TemporaryTvRoot& operator=(const TemporaryTvRoot&) = delete;

private:
    std::string path_;
};
