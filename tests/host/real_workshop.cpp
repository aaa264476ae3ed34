// The workshop of the real host: a directory below the working directory.
#include "host/workshop.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/process.hpp"

namespace vlx::test {

namespace fs = std::filesystem;

Workshop::Workshop()
    : directory_(std::string("host_test_") +
                 testing::UnitTest::GetInstance()->current_test_info()->name())
{
    fs::remove_all(directory_);
    fs::create_directory(directory_);
}

Workshop::~Workshop()
{
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
}

std::string Workshop::path(std::string_view name) const
{
    return directory_ + "/" + std::string(name);
}

std::string Workshop::make(std::string_view name, const Bytes& bytes) const
{
    std::ofstream file(path(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path(name);
}

std::optional<Bytes> Workshop::look(const std::string& path) const
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void Workshop::setVariable(const std::string& name, const std::string& value)
{
    setProcessVariable(name, value);
}

void Workshop::clearVariable(const std::string& name)
{
    clearProcessVariable(name);
}

} // namespace vlx::test
