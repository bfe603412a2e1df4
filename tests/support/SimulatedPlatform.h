// A fresh simulated TV and agent for one test: empty settings, a temporary filesystem root
// (removed afterwards), simulated time 1000 times faster, empty agent logs.
#pragma once

#include <string>
#include <vector>

#include "tvsim/TvSim.h"
#include "zelsim/HostSim.h"

namespace testing_support {

class SimulatedPlatform {
public:
    explicit SimulatedPlatform(double timeScale = 1000.0);
    ~SimulatedPlatform();
    SimulatedPlatform(const SimulatedPlatform&) = delete;
    SimulatedPlatform& operator=(const SimulatedPlatform&) = delete;

    tvsim::Tv& tv() { return tvsim::Tv::instance(); }
    const std::string& root() const { return root_; }

    // The agent log's texts since the previous take.
    std::vector<std::string> takeHostLogTexts();

private:
    std::string root_;
};

// Writes `text` to a file below the TV root, creating folders.
void writeTvFile(const std::string& tvPath, const std::string& text);
std::string readTvFile(const std::string& tvPath);

}  // namespace testing_support
