// Prepares the simulated TV that the plug-in will talk to: its filesystem root, its initial
// state (built-in profile, a profile file or an empty TV) and its time scale.
#pragma once

#include <string>

namespace agentsim {

struct TvOptions {
    std::string profile;  // empty: the built-in profile; "empty": no setting values; else a file
    std::string root;     // empty: a fresh temporary folder, removed at exit
    double timeScale = 1.0;
};

class SimulatedTv {
public:
    // Throws std::runtime_error with one line (for example a malformed profile).
    explicit SimulatedTv(const TvOptions& options);
    ~SimulatedTv();
    SimulatedTv(const SimulatedTv&) = delete;
    SimulatedTv& operator=(const SimulatedTv&) = delete;

    const std::string& root() const { return root_; }

private:
    std::string root_;
    bool temporaryRoot_ = false;
};

}  // namespace agentsim
