// Seams of the plug-in when it runs on the simulated TV: fixed paths resolve inside the TV's
// filesystem root, and time runs on the TV's scaled clock.
#include "common/Seams.h"
#include "tvsim/TvSim.h"

namespace norvane {

std::string platformPath(const std::string& tvPath) {
    return tvsim::Tv::instance().resolvePath(tvPath);
}

namespace clock {

void sleepSeconds(unsigned int seconds) {
    tvsim::Tv::instance().sleepFor(seconds);
}

void sleepMicroseconds(unsigned int microseconds) {
    tvsim::Tv::instance().sleepFor(microseconds / 1e6);
}

timespec monotonicNow() {
    return tvsim::Tv::instance().monotonicNow();
}

int timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec& deadline) {
    return tvsim::Tv::instance().timedWait(condition, mutex, deadline);
}

}  // namespace clock
}  // namespace norvane
