#include "outfile.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

// The temporary file, for a signal that ends the program.
std::array<char, 4096> signalledPath;

void removeAndEnd(int signal)
{
    unlink(signalledPath.data());
    raise(signal); // its action is the default one again
}

void removeOnSignal(const std::string& path)
{
    if (path.size() >= signalledPath.size())
        return;
    std::memcpy(signalledPath.data(), path.c_str(), path.size() + 1);
    struct sigaction action = {};
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

void forgetOnSignal()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

// Keeps the signals waiting.
class SignalsWait {
  public:
    SignalsWait()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : kSignals)
            sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    ~SignalsWait() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

  private:
    sigset_t before_;
};

// Makes a file whose name ends in XXXXXX, for which it puts other letters, and sees to it that a
// signal removes it, at whatever moment that comes.
int makeTemporary(std::string& path)
{
    const SignalsWait wait;
    const int file = mkostemp(path.data(), O_CLOEXEC);
    if (file >= 0)
        removeOnSignal(path);
    return file;
}

// The permissions of a new file.
mode_t usualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

OutputFile::OutputFile(const std::string& name)
    : shown_(name == "-" ? std::string("standard output") : name)
{
    struct stat status = {};
    const bool exists = name != "-" && stat(name.c_str(), &status) == 0;
    if (name == "-")
        file_ = STDOUT_FILENO;
    else if (exists && !S_ISREG(status.st_mode))
        file_ = open(name.c_str(), O_WRONLY | O_CLOEXEC);
    else
        openBeside(name);
    if (file_ < 0)
        throw Failure(
            fmt::format("cannot write {}: {}; give the name of a file that can be written", name,
                        systemReason()));
}

void OutputFile::openBeside(const std::string& name)
{
    std::error_code missing;
    place_ = std::filesystem::canonical(name, missing); // a link stays one
    if (missing)
        place_ = name;
    std::string path = place_.string() + ".XXXXXX";
    file_ = makeTemporary(path);
    if (file_ < 0)
        return;
    temporary_ = path;
    struct stat status = {};
    const mode_t mode = stat(place_.c_str(), &status) == 0 ? status.st_mode & 07777 : usualMode();
    if (fchmod(file_, mode) != 0) {
        unlink(path.c_str());
        throw Failure(fmt::format("cannot give {} its permissions: {}", name, systemReason()));
    }
}

OutputFile::~OutputFile()
{
    if (file_ > STDOUT_FILENO)
        close(file_);
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
        forgetOnSignal();
    }
}

void OutputFile::write(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(file_, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw Failure(fmt::format(
                "{} could not be written: {}; see that there is room for it and try again", shown_,
                systemReason()));
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutputFile::finish()
{
    if (temporary_.empty())
        return;
    const bool closed = close(file_) == 0;
    file_ = -1;
    if (!closed || std::rename(temporary_.c_str(), place_.c_str()) != 0)
        throw Failure(fmt::format("{} could not be put in its place: {}", shown_, systemReason()));
    temporary_.clear();
    forgetOnSignal();
}

bool OutputFile::isTerminal() const
{
    return isatty(file_) != 0;
}

} // namespace vlx::cli
