// A design as the kernel knows it before and after loading: where it comes from, and, once the
// loader has read it, its data.
//
// A design is made from a file path (FromFile) or from data already in memory (FromData). The
// loader stores what it read with SetEcadDesignData; GetEcadDesignData is null until then. Both
// may run on different threads.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/EcadDesignData.h"
#include "qzk/Object.h"

#include <mutex>
#include <string>

namespace qzk {

class EcadDesign : public Object {
public:
    // The design is not read here; IsGerber is decided by the path's extension.
    static du::SmartPtr<EcadDesign> FromFile(std::string const& path);
    // A design that is in memory already; url names it (it need not be a file).
    static du::SmartPtr<EcadDesign> FromData(du::Symbol const& url,
                                             du::SmartPtr<EcadDesignData> const& data);
    ~EcadDesign() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    du::SmartPtr<EcadDesignData> GetEcadDesignData() const;
    // The file path or name the design was made from.
    du::Symbol GetURL() const { return url_; }
    // True when the extension of the URL, lower-cased, is one of GetGerberExts' entries (an
    // entry as a whole, not a part of one). A design made from data is a Gerber design when its
    // data is overlay data.
    bool IsGerber() const { return gerber_; }

    // The extensions of Gerber files, each lower case with its point, joined by ';', no blanks:
    // ".gbr;.ger;.pho;.art;.gtl;.gbl;.gto;.gbo;.gts;.gbs;.gtp;.gbp;.gko;.gm1".
    static std::string const& GetGerberExts();
    // Whether a path's extension is one of those entries, in any case.
    static bool HasGerberExtension(std::string const& path);

    // Kernel side: the loader's result. Null forgets the data.
    void SetEcadDesignData(du::SmartPtr<EcadDesignData> const& data);
    // Kernel side: the kind of design ("schematic", ...) the file must hold, told by the scene
    // that shows it; empty for any. The loader refuses a file of another kind. A design is
    // shared by the scenes of one path, so the first scene that requires a kind decides it.
    void RequireKind(std::string const& kind);
    std::string GetRequiredKind() const;

protected:
    void _OnDestroy() override;

private:
    EcadDesign(du::Symbol url, bool gerber);

    du::Symbol const url_;
    bool const gerber_;
    mutable std::mutex mutex_;
    du::SmartPtr<EcadDesignData> data_;
    std::string requiredKind_;
};

} // namespace qzk
