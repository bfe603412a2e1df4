#include "zel/core/Mutex.h"

namespace Zel {
namespace Core {

Mutex::Mutex() {
    pthread_mutex_init(&mutex_, nullptr);
}

Mutex::~Mutex() {
    pthread_mutex_destroy(&mutex_);
}

void Mutex::lock() {
    pthread_mutex_lock(&mutex_);
}

void Mutex::unlock() {
    pthread_mutex_unlock(&mutex_);
}

LockMutex::LockMutex(Mutex& mutex) : mutex_(mutex) {
    mutex_.lock();
}

LockMutex::~LockMutex() {
    mutex_.unlock();
}

}  // namespace Core
}  // namespace Zel
