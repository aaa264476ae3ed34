#include "frame/alias.hpp"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include "frame/globals.hpp"
#include "frame/locdir.hpp"
#include "frame/objman.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"

TS_TRACE_UNIT("tsalias");

namespace {

constexpr int kLineSize = 32767;
constexpr int kPathSize = 260;

bool isSpace(char byte)
{
    return std::isspace(static_cast<unsigned char>(byte)) != 0;
}

// One token of a line.
struct Token {
    const char* text;
    std::size_t length;

    int shown() const { return static_cast<int>(length); } // for "%d"
};

// Takes the next token from `line` and terminates it; a length of 0 is none.
Token nextToken(char*& line)
{
    line += std::strspn(line, " \t\n");
    const Token token{line, std::strcspn(line, " \t\n")};
    line += token.length;
    if (*line)
        *line++ = 0;
    return token;
}

// The state of the reading, line by line.
class AliasReader {
  public:
    AliasReader(TSObjManager& manager, vlx::TraceGuard& trace)
        : tsTrace(trace), tail_(&manager.aliases)
    {
        for (int byte = 0; byte <= UCHAR_MAX; ++byte)
            upper_[byte] = static_cast<char>(std::toupper(byte));
    }

    // False stops the reading. The line is taken apart.
    bool line(char* line);

  private:
    bool beginEntry(const char* line, Token name);
    bool addAlias(Token alias);

    vlx::TraceGuard& tsTrace; // of the function that reads
    TSAliasNode** tail_;
    char codePage_[TSAliasNode::kMaxName + 1] = "";
    bool inEntry_ = false;
    char upper_[UCHAR_MAX + 1]; // by the process's locale
};

bool AliasReader::line(char* line)
{
    if (*line == '#' || line[std::strspn(line, " \t\r\n")] == 0)
        return true;
    if (inEntry_ && !isSpace(*line))
        inEntry_ = false;
    char* at = line;
    Token token = nextToken(at);
    if (token.length == 0)
        return true;
    if (!inEntry_) {
        if (!beginEntry(line, token))
            return false;
        token = nextToken(at);
    }
    for (; token.length > 0; token = nextToken(at))
        if (!addAlias(token))
            return false;
    return true;
}

bool AliasReader::beginEntry(const char* line, Token name)
{
    if (isSpace(*line)) {
        TS_PRINT(TRC1_ERRORS, "Codepage name %s does not start in column 1", name.text);
        return false;
    }
    if (name.length > TSAliasNode::kMaxName) {
        TS_PRINT(TRC1_ERRORS, "codepage name length (%d) for %s exceeds maximum of %d",
                 name.shown(), name.text, TSAliasNode::kMaxName);
        return false;
    }
    std::memcpy(codePage_, name.text, name.length);
    codePage_[name.length] = 0;
    TS_PRINT(TRC1_DETAIL, "Processing codepage '%s'", codePage_);
    inEntry_ = true;
    return true;
}

bool AliasReader::addAlias(Token alias)
{
    if (alias.length > TSAliasNode::kMaxAlias) {
        // Deliberate: the message names the limit of code page names, not that of aliases.
        TS_PRINT(TRC1_ERRORS, "Alias name length (%d) for %s exceeds maximum of %d", alias.shown(),
                 alias.text, TSAliasNode::kMaxName);
        return false;
    }
    auto* const node = static_cast<TSAliasNode*>(vlx::allocateObject(sizeof(TSAliasNode)));
    if (!node) {
        TS_PRINT(TRC1_ERRORS, "Unable to allocate %d bytes for codepage %s, alias %s",
                 static_cast<int>(sizeof(TSAliasNode)), codePage_, alias.text);
        return false;
    }
    TS_PRINT(TRC1_DETAIL, "Processing alias '%s'", alias.text);
    node->next = nullptr;
    std::memcpy(node->codePageName, codePage_, sizeof codePage_);
    for (std::size_t i = 0; i < alias.length; ++i)
        node->aliasName[i] = upper_[static_cast<unsigned char>(alias.text[i])];
    node->aliasName[alias.length] = 0;
    TS_PRINT(TRC1_DETAIL, "Saved alias %s, length = %d", node->aliasName, alias.shown());
    *tail_ = node;
    tail_ = &node->next;
    return true;
}

// Opens a file of text. The host is asked first: a pipe would wait for a writer, and a device may
// have no end.
std::FILE* openText(const char* path)
{
    vlx::host::OpenError error = vlx::host::OpenError::kNone;
    const vlx::host::File probe = vlx::host::open(path, vlx::host::Access::kRead, error);
    if (probe != vlx::host::kNoFile) {
        vlx::host::close(probe);
    } else if (error == vlx::host::OpenError::kOther) {
        errno = EINVAL;
        return nullptr;
    }
    return std::fopen(path, "r");
}

// A file that was written on another host: "\r\n" ends a line here, too, as it does there.
void dropCarriageReturn(char* line)
{
    const std::size_t length = std::strlen(line);
    if (length < 2 || line[length - 2] != '\r' || line[length - 1] != '\n')
        return;
    line[length - 2] = '\n';
    line[length - 1] = 0;
}

// Reads a file of lines of any length; false if the reader stopped it.
bool readLines(std::FILE* file, AliasReader& reader, char* line)
{
    while (std::fgets(line, kLineSize, file)) {
        dropCarriageReturn(line);
        if (!reader.line(line))
            return false;
    }
    return true;
}

} // namespace

std::int32_t TSBuildAliasList(TSObjManager* manager)
{
    TS_TRACE(TSBuildAliasList);
    char path[kPathSize];
    if (!TSComposeAliasName(manager->directory, path, sizeof path)) {
        TS_PRINT(TRC1_ERRORS, "Unable to generate alias file name");
        TS_RETURN(1);
    }
    std::FILE* const file = openText(path);
    if (!file) {
        TS_PRINT(TRC1_ERRORS, "Open of %s failed, err = %d", path, errno);
        TS_RETURN(1);
    }
    char line[kLineSize];
    AliasReader reader(*manager, tsTrace);
    const bool complete = readLines(file, reader, line);
    std::fclose(file);
    TS_RETURN(complete ? 0 : 1);
}

std::int32_t TSDestroyAliasList(TSObjManager* manager)
{
    TS_TRACE(TSDestroyAliasList);
    for (TSAliasNode* node = manager->aliases; node;) {
        TSAliasNode* const next = node->next;
        vlx::releaseObject(node);
        node = next;
    }
    manager->aliases = nullptr;
    TS_RETURN(0);
}

const char* TSGetCodepageFromAlias(TSObjManager* manager, const char* alias)
{
    TS_TRACE(TSGetCodepageFromAlias);
    TS_PRINT(TRC1_INPUTS, "Searching for %s.", alias);
    const std::size_t length = std::strlen(alias);
    for (const TSAliasNode* node = manager->aliases; node; node = node->next)
        if (std::strlen(node->aliasName) == length &&
            vlx::host::equalIgnoringCase(node->aliasName, alias, length)) {
            TS_PRINT(TRC1_RESULTS, "%s -> %s", alias, node->codePageName);
            TS_RETURN(&node->codePageName[0]);
        }
    const char* const none = nullptr;
    TS_RETURN(none);
}
