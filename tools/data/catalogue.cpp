#include <algorithm>

#include "object.hpp"

namespace vlx::data {

namespace {

std::string folded(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return name;
}

} // namespace

bool Catalogue::add(std::uint8_t type, std::uint16_t id, const std::string& name)
{
    const std::pair byName{type, folded(name)};
    const std::pair byId{type, id};
    if (ids_.contains(byName) || names_.contains(byId))
        return false;
    ids_.emplace(byName, id);
    names_.emplace(byId, name);
    return true;
}

std::optional<std::uint16_t> Catalogue::idOf(std::uint8_t type, const std::string& name) const
{
    const auto found = ids_.find({type, folded(name)});
    if (found == ids_.end())
        return std::nullopt;
    return found->second;
}

} // namespace vlx::data
