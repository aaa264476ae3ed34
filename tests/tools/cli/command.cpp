#include "command.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <csignal>

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vlx::cli::test {

namespace {

std::string environment(const Surroundings& surroundings)
{
    return "env -u NO_COLOR -u TS_LANG LC_ALL=" + surroundings.language + " TS_LOCALEDIR='" +
           surroundings.localeDirectory + "' ";
}

std::string inExamples(const std::string& command)
{
    return "cd '" VLX_EXAMPLES "' && " + command;
}

int exitStatus(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

Outcome run(const std::string& arguments, const Surroundings& surroundings)
{
    const Workshop workshop;
    const std::string input = surroundings.input.empty() ? "" : surroundings.input + " | ";
    const std::string command = inExamples(input + environment(surroundings) + VLX_COMMAND " " +
                                           arguments + " 2>'" + workshop.path("errors") + "'");
    Outcome outcome{-1, {}, {}};
    FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 4096> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe))
        outcome.out.append(piece.data(), count);
    outcome.status = exitStatus(pclose(pipe));
    outcome.errors = contentOf(workshop.path("errors"));
    return outcome;
}

Child::Child(const std::vector<std::string>& arguments)
{
    int in[2];
    int out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0)
        std::abort();
    std::vector<std::string> words{VLX_COMMAND, "--locale-dir", VLX_LOCALE};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        execv(VLX_COMMAND, pointers.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    input_ = in[1];
    output_ = out[0];
}

Child::~Child()
{
    if (child_ > 0)
        finish();
}

void Child::write(std::string_view text) const
{
    while (!text.empty()) {
        const ssize_t count = ::write(input_, text.data(), text.size());
        if (count <= 0)
            std::abort();
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string Child::read(std::size_t size) const
{
    std::string text(size, '\0');
    std::size_t filled = 0;
    ssize_t count = 1;
    for (; filled < size && count > 0; filled += static_cast<std::size_t>(count))
        count = ::read(output_, text.data() + filled, size - filled);
    text.resize(filled);
    return text;
}

void Child::endInput()
{
    close(input_);
    input_ = -1;
}

void Child::signal(int signal) const
{
    kill(child_, signal);
}

Child::End Child::finish()
{
    if (input_ >= 0)
        endInput();
    close(output_);
    End end{-1, 0};
    rusage usage{};
    wait4(child_, &end.status, 0, &usage);
    end.mostMemory = usage.ru_maxrss;
    child_ = -1;
    return end;
}

std::string onTerminal(const std::string& arguments, const std::string& variables)
{
    const std::string command =
        inExamples(environment({}) + variables + " " VLX_COMMAND " " + arguments);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    std::string out;
    std::array<char, 4096> piece;
    for (ssize_t count = 0; (count = read(terminal, piece.data(), piece.size())) > 0;)
        out.append(piece.data(), static_cast<std::size_t>(count));
    close(terminal);
    waitpid(child, nullptr, 0);
    return out;
}

nlohmann::json walked(const std::string& arguments, const Surroundings& surroundings)
{
    return nlohmann::json::parse(run("walk --json " + arguments, surroundings).out);
}

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string masked(std::string text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t end =
            std::min(text.find_first_not_of("0123456789ABCDEF", at), text.size());
        if (const std::size_t size = end - at; size == 2 || size == 4)
            text.replace(at, size, size, '#');
        at = std::min(text.find_first_of(" :\n\t", end), text.size());
    }
    return text;
}

Workshop::Workshop()
{
    std::string name = (std::filesystem::temp_directory_path() / "vlx_cli_XXXXXX").string();
    if (!mkdtemp(name.data()))
        std::abort();
    path_ = name;
}

Workshop::~Workshop()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string Workshop::file(const std::string& name, std::string_view content) const
{
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

} // namespace vlx::cli::test
