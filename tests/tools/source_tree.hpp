// A source directory of a test's own: the shipped Unicode tables, a version, an alias file and the
// code pages that the test writes. It goes away with the object.
#pragma once

#include <filesystem>
#include <string>

#include "build.hpp"
#include "object.hpp"

class SourceTree {
  public:
    SourceTree();
    ~SourceTree();
    SourceTree(const SourceTree&) = delete;
    SourceTree& operator=(const SourceTree&) = delete;

    std::string path(const std::string& name) const { return (root_ / name).string(); }
    std::string output() const { return path("out"); }
    // Any file below the directory, its folders made as needed.
    void write(const std::string& name, const std::string& text) const;
    void page(const std::string& name, const std::string& text) const
    {
        write("codepages/" + name + ".cp", text);
    }
    vlx::data::Diagnostics build(const std::string& output = "out") const;

  private:
    std::filesystem::path root_;
};

// A small page of one byte, the settings first. `settings` and `rows` go behind what is there.
std::string smallPage(const std::string& settings = "", const std::string& rows = "");
// A page of two bytes with one row of them, 8140 to 8143.
std::string doublePage(const std::string& rows = "", const std::string& settings = "");

std::string contentOf(const std::string& path);
std::string linesOf(const vlx::data::Diagnostics& diagnostics);
