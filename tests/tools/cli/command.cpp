#include "command.hpp"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <pty.h>
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
    const std::string command = inExamples(environment(surroundings) + VLX_COMMAND " " + arguments +
                                           " 2>'" + workshop.path("errors") + "'");
    Outcome outcome{-1, {}, {}};
    FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 4096> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe))
        outcome.out.append(piece.data(), count);
    outcome.status = exitStatus(pclose(pipe));
    outcome.errors = contentOf(workshop.path("errors"));
    return outcome;
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
