// The word of a thread, on a POSIX host. The system ends it after the thread's C++ objects, so that
// their destructors still find the data that hangs on it. The thread that ends the process is no
// thread that ends here.
#include "host/zbq/slot.hpp"

#include <pthread.h>

namespace zbq {

namespace {

pthread_once_t keyOnce = PTHREAD_ONCE_INIT;
pthread_key_t key;
bool keyMade = false;

void makeKey()
{
    keyMade = pthread_key_create(&key, endThreadWord) == 0;
}

bool haveKey()
{
    pthread_once(&keyOnce, makeKey);
    return keyMade;
}

} // namespace

void* threadWord()
{
    return haveKey() ? pthread_getspecific(key) : nullptr;
}

bool setThreadWord(void* word)
{
    return haveKey() && pthread_setspecific(key, word) == 0;
}

} // namespace zbq
