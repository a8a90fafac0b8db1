#include "du/FileSpec.h"

namespace du {
namespace {

std::size_t NameStart(std::string const& path) {
    auto const separator = path.find_last_of("/\\");
    return separator == std::string::npos ? 0 : separator + 1;
}

} // namespace

FileSpec::FileSpec(std::string const& path) : path_(path) {}

std::string FileSpec::GetFileName() const {
    return path_.substr(NameStart(path_));
}

std::string FileSpec::GetDirectory() const {
    return path_.substr(0, NameStart(path_));
}

bool FileSpec::GetFileExtension(std::string* extension) const {
    std::string const name = GetFileName();
    auto const dot = name.rfind('.');
    bool const has = dot != std::string::npos && dot != 0 && dot + 1 < name.size();
    if (extension != nullptr) {
        *extension = has ? name.substr(dot + 1) : std::string();
    }
    return has;
}

} // namespace du
