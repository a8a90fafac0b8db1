// A file path, split into its parts. Both '/' and '\\' separate directories, so a path from a
// host on any system splits the same way.
#pragma once

#include <string>

namespace du {

class FileSpec {
public:
    explicit FileSpec(std::string const& path);

    std::string const& GetPath() const noexcept { return path_; }
    // The last component of the path (empty for a path ending in a separator).
    std::string GetFileName() const;
    // Everything before the last component, with its trailing separator.
    std::string GetDirectory() const;
    // The text after the last dot of the file name, without the dot and in the case the file
    // has it. A file name with no dot, a name whose only dot leads it (".profile") and a name
    // ending in a dot have no extension: false, and *extension (when given) becomes empty.
    // Dots in directory names never count.
    bool GetFileExtension(std::string* extension) const;

private:
    std::string path_;
};

} // namespace du
