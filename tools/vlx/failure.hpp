// How the command line fails: a message that says what was wrong and what to do.
#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vlx::cli {

// Exit statuses of the command.
inline constexpr int kExitGood = 0;
inline constexpr int kExitText = 1;   // the text has characters that are unmapped or cut off
inline constexpr int kExitFailed = 2; // nothing could be said about it

class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Why the last call of the system failed.
inline std::string systemReason()
{
    return std::error_code(errno, std::generic_category()).message();
}

} // namespace vlx::cli
