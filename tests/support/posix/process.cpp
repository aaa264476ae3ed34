#include "support/process.hpp"

#include <cstdlib>

namespace vlx::test {

void setProcessVariable(const std::string& name, const std::string& value)
{
    setenv(name.c_str(), value.c_str(), 1);
}

void clearProcessVariable(const std::string& name)
{
    unsetenv(name.c_str());
}

} // namespace vlx::test
