// Agent locking primitives.
#pragma once

#include <pthread.h>

namespace Zel {
namespace Core {

class Mutex {
public:
    Mutex();
    ~Mutex();
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock();
    void unlock();

private:
    pthread_mutex_t mutex_;
};

// Holds a Mutex for the lifetime of the object.
class LockMutex {
public:
    explicit LockMutex(Mutex& mutex);
    ~LockMutex();
    LockMutex(const LockMutex&) = delete;
    LockMutex& operator=(const LockMutex&) = delete;

private:
    Mutex& mutex_;
};

}  // namespace Core
}  // namespace Zel
