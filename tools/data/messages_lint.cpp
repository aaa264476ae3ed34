// Messages of two languages beside each other.
#include "messages.hpp"

#include <algorithm>

#include "sourcefile.hpp"

namespace vlx::data {

namespace {

std::string which(std::uint32_t set, std::uint32_t number)
{
    return "set " + std::to_string(set) + ", message " + std::to_string(number);
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text.empty() ? "none" : text;
}

// A directive without what is the translator's: flags, width and precision. An argument's number
// and type stay.
std::string plainDirective(std::string_view inside, char conversion)
{
    std::string directive = "%";
    if (const std::size_t dollar = inside.find('$'); dollar != std::string_view::npos)
        directive += inside.substr(0, dollar + 1);
    for (const char letter : inside)
        if (std::string_view("hlLqjzt*").find(letter) != std::string_view::npos)
            directive += letter;
    return directive + conversion;
}

} // namespace

std::vector<std::string> directivesOf(const std::string& text)
{
    static constexpr std::string_view kConversions = "diouxXeEfFgGaAcspn";
    std::vector<std::string> directives;
    for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos;) {
        ++at;
        if (at < text.size() && text[at] == '%') {
            ++at;
            continue;
        }
        const std::size_t end = text.find_first_not_of("0123456789$-+ #'.*hlLqjzt", at);
        if (end == std::string::npos)
            break;
        if (kConversions.find(text[end]) != std::string_view::npos)
            directives.push_back(
                plainDirective(std::string_view(text).substr(at, end - at), text[end]));
        at = end;
    }
    // Without numbers the order tells which argument is meant.
    const bool numbered = std::ranges::any_of(directives, [](const std::string& directive) {
        return directive.find('$') != std::string::npos;
    });
    if (numbered)
        std::ranges::sort(directives);
    return directives;
}

void compareMessages(const MessageCatalog& one, const MessageCatalog& other,
                     const std::string& file, Diagnostics& diagnostics)
{
    Reporter report(file, diagnostics);
    const auto find = [](const MessageCatalog& catalog, std::uint32_t set,
                         std::uint32_t number) -> const Message* {
        const auto messages = catalog.sets.find(set);
        if (messages == catalog.sets.end())
            return nullptr;
        const auto message = messages->second.find(number);
        return message == messages->second.end() ? nullptr : &message->second;
    };
    for (const auto& [set, messages] : one.sets)
        for (const auto& [number, message] : messages) {
            const Message* const same = find(other, set, number);
            if (!same) {
                report.error(0, which(set, number) + " is missing");
                continue;
            }
            const auto wanted = directivesOf(message.text);
            const auto found = directivesOf(same->text);
            if (wanted != found)
                report.error(same->line, which(set, number) + " has the directives " +
                                             joined(found) + " instead of " + joined(wanted));
        }
    for (const auto& [set, messages] : other.sets)
        for (const auto& [number, message] : messages)
            if (!find(one, set, number))
                report.error(message.line, which(set, number) + " is in this language alone");
}

} // namespace vlx::data
