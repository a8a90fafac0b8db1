#include "qzk/EcadDesign.h"

#include "qzk/ecad/EcadDesignData.h"

#include <cctype>

namespace qzk {
namespace {

bool const registered = ClassType::RegisterClass(classid::EcadDesign, {classid::Object});

// The extension with its point, lower case; empty when the file name has none.
std::string LowerExtension(std::string const& path) {
    std::size_t slash = path.find_last_of("/\\");
    std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) {
        return {};
    }
    std::string ext = path.substr(dot);
    for (char& c : ext) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return ext;
}

} // namespace

du::SmartPtr<EcadDesign> EcadDesign::FromFile(std::string const& path) {
    return du::SmartPtr<EcadDesign>(new EcadDesign(du::Symbol(path), HasGerberExtension(path)));
}

du::SmartPtr<EcadDesign> EcadDesign::FromData(du::Symbol const& url,
                                              du::SmartPtr<EcadDesignData> const& data) {
    auto const* ecad = dynamic_cast<qzk::ecad::EcadDesignData const*>(data.Get());
    du::SmartPtr<EcadDesign> design(new EcadDesign(url, ecad != nullptr && ecad->IsOverlayData()));
    design->SetEcadDesignData(data);
    return design;
}

EcadDesign::EcadDesign(du::Symbol url, bool gerber) : url_(std::move(url)), gerber_(gerber) {}

EcadDesign::~EcadDesign() = default;

ClassType const& EcadDesign::GetClassType() const {
    static ClassType const type(classid::EcadDesign);
    return type;
}

du::Symbol EcadDesign::GetDebugClassName() const {
    return du::Symbol("qzk::EcadDesign");
}

du::SmartPtr<EcadDesignData> EcadDesign::GetEcadDesignData() const {
    std::lock_guard lock(mutex_);
    return data_;
}

void EcadDesign::RequireKind(std::string const& kind) {
    std::lock_guard lock(mutex_);
    if (requiredKind_.empty()) {
        requiredKind_ = kind;
    }
}

std::string EcadDesign::GetRequiredKind() const {
    std::lock_guard lock(mutex_);
    return requiredKind_;
}

void EcadDesign::SetEcadDesignData(du::SmartPtr<EcadDesignData> const& data) {
    du::SmartPtr<EcadDesignData> old;
    {
        std::lock_guard lock(mutex_);
        old = data_;
        data_ = data;
    }
    // The old data, if this was its last reference, goes outside the lock.
}

std::string const& EcadDesign::GetGerberExts() {
    static std::string const exts = ".gbr;.ger;.pho;.art;.gtl;.gbl;.gto;.gbo;.gts;.gbs;.gtp;.gbp;"
                                    ".gko;.gm1";
    return exts;
}

bool EcadDesign::HasGerberExtension(std::string const& path) {
    std::string const ext = LowerExtension(path);
    if (ext.empty()) {
        return false;
    }
    std::string const& exts = GetGerberExts();
    std::size_t start = 0;
    while (start <= exts.size()) {
        std::size_t end = exts.find(';', start);
        if (end == std::string::npos) {
            end = exts.size();
        }
        if (exts.compare(start, end - start, ext) == 0) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

void EcadDesign::_OnDestroy() {}

} // namespace qzk
