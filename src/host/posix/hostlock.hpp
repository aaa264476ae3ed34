// A lock of a POSIX host, as std::lock_guard takes it. The one of the standard library throws when
// the system refuses it, for which the whole machinery of exceptions would stand in the library.
#pragma once

#include <pthread.h>

namespace vlx::host {

class Lock {
  public:
    void lock() { pthread_mutex_lock(&mutex_); }
    void unlock() { pthread_mutex_unlock(&mutex_); }

  private:
    pthread_mutex_t mutex_ = PTHREAD_MUTEX_INITIALIZER;
};

} // namespace vlx::host
