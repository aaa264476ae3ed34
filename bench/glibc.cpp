#include "glibc.hpp"

#include <cstdlib>
#include <filesystem>

namespace vlx::bench {

namespace {

namespace fs = std::filesystem;

// A directory for compiled locales, which goes away with the run. LOCPATH names it, so that
// newlocale() looks there.
class LocaleFolder {
  public:
    LocaleFolder()
    {
        std::string name = (fs::temp_directory_path() / "vlx_bench_XXXXXX").string();
        if (!mkdtemp(name.data()))
            return;
        path_ = name;
        setenv("LOCPATH", name.c_str(), 1);
    }
    ~LocaleFolder()
    {
        std::error_code ignored;
        if (!path_.empty())
            fs::remove_all(path_, ignored);
    }
    LocaleFolder(const LocaleFolder&) = delete;
    LocaleFolder& operator=(const LocaleFolder&) = delete;

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

} // namespace

std::string glibcLocaleName(const std::string& source, const std::string& charmap)
{
    static const LocaleFolder folder;
    if (folder.path().empty())
        return {};
    std::string name = source + '.' + charmap;
    const fs::path target = folder.path() / name;
    if (!fs::exists(target)) {
        // It warns about characters of the locale that the code page lacks, and the locale is good
        // all the same: whether it can be opened decides.
        const std::string command = "localedef -c -i " + source + " -f " + charmap + " '" +
                                    target.string() + "' >/dev/null 2>&1";
        static_cast<void>(std::system(command.c_str()) == 0);
    }
    const locale_t locale = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
    if (!locale)
        return {};
    freelocale(locale);
    return name;
}

GlibcLocale::GlibcLocale(const std::string& source, const std::string& charmap)
{
    const std::string name = glibcLocaleName(source, charmap);
    if (name.empty())
        return;
    locale_ = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
    previous_ = uselocale(locale_);
}

GlibcLocale::~GlibcLocale()
{
    if (!locale_)
        return;
    uselocale(previous_);
    freelocale(locale_);
}

} // namespace vlx::bench
