// Seams of the build against the real TV: fixed paths unchanged, real time.
#include <unistd.h>

#include "common/Seams.h"

namespace norvane {

std::string platformPath(const std::string& tvPath) {
    return tvPath;
}

namespace clock {

void sleepSeconds(unsigned int seconds) {
    ::sleep(seconds);
}

void sleepMicroseconds(unsigned int microseconds) {
    ::usleep(microseconds);
}

timespec monotonicNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

int timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec& deadline) {
    return pthread_cond_timedwait(condition, mutex, &deadline);
}

}  // namespace clock
}  // namespace norvane
