// Runs the command line as a user does: in a shell, in the directory of the examples.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace vlx::cli::test {

struct Outcome {
    int status; // -1 if the program was ended by a signal
    std::string out;
    std::string errors;
};

// With the locale directory of the build, or another, and a UTF-8 locale, or another. `arguments`
// goes through the shell.
struct Surroundings {
    std::string localeDirectory = VLX_LOCALE;
    std::string language = "C.UTF-8"; // LC_ALL
    std::string input = {};           // a command whose output is the standard input
};
Outcome run(const std::string& arguments, const Surroundings& surroundings = {});

// The program as a child, with its standard input and output in our hands.
class Child {
  public:
    explicit Child(const std::vector<std::string>& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void write(std::string_view text) const;
    std::string read(std::size_t size) const; // waits for so many bytes, or for the end
    void endInput();
    void signal(int signal) const;
    int id() const { return child_; } // of the process

    struct End {
        int status;      // as wait() gives it
        long mostMemory; // KiB
    };
    // Closes what is open and waits.
    End finish();

  private:
    int input_ = -1;
    int output_ = -1;
    int child_ = -1;
};

// What the program writes to a terminal. `variables` are settings for it, such as NO_COLOR=1.
std::string onTerminal(const std::string& arguments, const std::string& variables);

// The document that `walk --json` writes.
nlohmann::json walked(const std::string& arguments, const Surroundings& surroundings = {});

std::string contentOf(const std::filesystem::path& path);

// With a sign # for each digit of hex numbers that are words of two or four digits: the weights of
// a sort are not promised.
std::string masked(std::string text);

// A directory of its own for each test, gone at its end.
class Workshop {
  public:
    Workshop();
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    std::string path(const std::string& name) const { return (path_ / name).string(); }
    // Writes a file and gives its path.
    std::string file(const std::string& name, std::string_view content) const;

  private:
    std::filesystem::path path_;
};

} // namespace vlx::cli::test
