#include "du/Localizer.h"

#include "dp/Environment.h"

#include <nlohmann/json.hpp>

#include <dlfcn.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace du {

struct Localizer::Catalogue {
    std::string path;
    std::map<std::string, std::string> texts;
};

namespace {

struct Cache {
    std::mutex mutex;
    std::map<std::string, std::shared_ptr<Localizer::Catalogue const>> catalogues;
};

Cache& GetCache() {
    static Cache cache;
    return cache;
}

std::filesystem::path LibraryDir() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void const*>(&GetCache), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    std::error_code error;
    auto const path = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::filesystem::path() : path.parent_path();
}

std::vector<std::filesystem::path> DataDirs() {
    std::vector<std::filesystem::path> dirs;
    if (std::string const env = dp::Environment::Get("QZK_DATA_DIR"); !env.empty()) {
        dirs.emplace_back(env);
    }
    if (auto const lib = LibraryDir(); !lib.empty()) {
        dirs.push_back(lib.parent_path() / "share" / "qzkernel");
    }
#ifdef QZK_INSTALL_DATA_DIR
    dirs.emplace_back(QZK_INSTALL_DATA_DIR);
#endif
#ifdef QZK_BUILD_DATA_DIR
    dirs.emplace_back(QZK_BUILD_DATA_DIR);
#endif
    return dirs;
}

// "<package>:<name>" lives in <package>/<name>.json; a name without a package directly in the
// data directory.
std::filesystem::path RelativeFile(std::string const& name) {
    auto const colon = name.find(':');
    if (colon == std::string::npos) {
        return std::filesystem::path(name + ".json");
    }
    return std::filesystem::path(name.substr(0, colon)) / (name.substr(colon + 1) + ".json");
}

std::shared_ptr<Localizer::Catalogue const> Read(std::string const& name) {
    auto catalogue = std::make_shared<Localizer::Catalogue>();
    for (auto const& dir : DataDirs()) {
        auto const file = dir / RelativeFile(name);
        std::ifstream in(file);
        if (!in) {
            continue;
        }
        auto const json = nlohmann::json::parse(in, nullptr, false);
        if (!json.is_object()) {
            continue;
        }
        catalogue->path = file.string();
        for (auto const& [key, value] : json.items()) {
            if (value.is_string()) {
                catalogue->texts.emplace(key, value.get<std::string>());
            }
        }
        break;
    }
    return catalogue;
}

std::shared_ptr<Localizer::Catalogue const> Find(std::string const& name) {
    Cache& cache = GetCache();
    std::lock_guard lock(cache.mutex);
    auto& slot = cache.catalogues[name];
    if (!slot) {
        slot = Read(name);
    }
    return slot;
}

} // namespace

Localizer::Localizer(char const* catalogue)
    : name_(catalogue != nullptr ? catalogue : ""), catalogue_(Find(name_)) {}

Localizer::~Localizer() = default;
Localizer::Localizer(Localizer const&) = default;
Localizer& Localizer::operator=(Localizer const&) = default;

std::string Localizer::LocalizeMessage(char const* key, ActionOnFailure onFailure) const {
    return LocalizeMessage(key, AssembleArgs(""), onFailure);
}

std::string Localizer::LocalizeMessage(char const* key, AssembleArgs const& args,
                                       ActionOnFailure onFailure) const {
    std::string name = key != nullptr ? key : "";
    auto const found = catalogue_->texts.find(name);
    if (found != catalogue_->texts.end()) {
        return args.Substitute(found->second);
    }
    switch (onFailure) {
    case eReturnEmpty:
        return {};
    case eThrow:
        throw std::runtime_error("message \"" + name + "\" not in catalogue \"" + name_ + "\"");
    case eReturnKey:
    default:
        return name;
    }
}

bool Localizer::HasMessage(char const* key) const {
    return key != nullptr && catalogue_->texts.count(key) != 0;
}

std::string Localizer::GetCataloguePath() const {
    return catalogue_->path;
}

void Localizer::ResetCache() {
    Cache& cache = GetCache();
    std::lock_guard lock(cache.mutex);
    cache.catalogues.clear();
}

} // namespace du
