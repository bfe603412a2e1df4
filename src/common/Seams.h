// The plug-in's two platform seams. Every fixed absolute path and every sleep, monotonic clock
// read and timed wait goes through here, so that a build against the simulated TV can place the
// TV's filesystem in a folder and run time faster. The production build uses the paths as they
// stand and the real clock.
#pragma once

#include <pthread.h>
#include <time.h>

#include <string>

namespace norvane {

// Where a fixed TV path (such as "/OAD/") lies for this process.
std::string platformPath(const std::string& tvPath);

namespace clock {

void sleepSeconds(unsigned int seconds);
void sleepMicroseconds(unsigned int microseconds);
timespec monotonicNow();
// pthread_cond_timedwait on a condition variable that uses CLOCK_MONOTONIC, with `deadline` on
// the clock of monotonicNow(). Returns the wait's result (0, ETIMEDOUT, ...).
int timedWait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec& deadline);

}  // namespace clock
}  // namespace norvane
