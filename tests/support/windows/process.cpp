#include "support/process.hpp"

#include <windows.h>

namespace vlx::test {

void setProcessVariable(const std::string& name, const std::string& value)
{
    SetEnvironmentVariableA(name.c_str(), value.c_str());
}

void clearProcessVariable(const std::string& name)
{
    SetEnvironmentVariableA(name.c_str(), nullptr);
}

} // namespace vlx::test
