// The workshop of the memory host.
#include "host/workshop.hpp"

#include "support/memory_host.hpp"

namespace vlx::test {

Workshop::Workshop() : directory_("/workshop")
{
    MemoryHost::reset();
}

Workshop::~Workshop()
{
    MemoryHost::reset();
}

std::string Workshop::path(std::string_view name) const
{
    return directory_ + "/" + std::string(name);
}

std::string Workshop::make(std::string_view name, const Bytes& bytes) const
{
    MemoryHost::put(path(name), bytes);
    return path(name);
}

std::optional<Bytes> Workshop::look(const std::string& path) const
{
    return MemoryHost::get(path);
}

void Workshop::setVariable(const std::string& name, const std::string& value)
{
    MemoryHost::setEnvironment(name, value);
}

void Workshop::clearVariable(const std::string&)
{
    MemoryHost::clearEnvironment();
}

} // namespace vlx::test
