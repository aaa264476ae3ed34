// One word of each thread, whose end is noticed; the host's, in `posix/` and `windows/`.
#pragma once

namespace zbq {

// Null at first.
void* threadWord();

// False if the system has no room for it.
bool setThreadWord(void* word);

// Called in a thread that ends with a word that is not null. The word is null then, and may be set
// for the time of the call.
void endThreadWord(void* word);

} // namespace zbq
