// Prepares the simulated TV that the plug-in will talk to: its filesystem root, its initial
// state (built-in profile, a profile file or an empty TV) and its time scale.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "TemporaryFiles.h"

namespace agentsim {

struct TvOptions {
    std::string profile;  // empty: the built-in profile; "empty": no setting values; else a file
    std::string root;     // empty: a fresh temporary folder, removed at exit
    double timeScale = 1.0;
};

class SimulatedTv {
public:
    // Throws std::invalid_argument (one line) for a root folder or profile that cannot be used,
    // std::runtime_error when the TV cannot be set up. Whatever it made is removed then.
    explicit SimulatedTv(const TvOptions& options);
    ~SimulatedTv();
    SimulatedTv(const SimulatedTv&) = delete;
    SimulatedTv& operator=(const SimulatedTv&) = delete;

    const std::string& root() const { return root_; }

private:
    std::unique_ptr<TemporaryFolder> temporaryRoot_;
    std::string root_;
};

// A setting's value on the simulated TV now; empty or 0 when it has none of that type.
std::string tvText(const char* key);
int32_t tvNumber(const char* key);

}  // namespace agentsim
