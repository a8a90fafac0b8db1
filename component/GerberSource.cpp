#include "component/GerberSource.h"

#include "du/FileSpec.h"
#include "qzk/EcadDesign.h"
#include "qzk/ViewableSource.h"

#include <cctype>
#include <string>

namespace qzkapp::ecad {

bool IsGerberSource(du::SmartPtr<qzk::ViewableSource> const& source) {
    du::FileSpec const file(static_cast<std::string>(source->GetFileSource()));
    std::string extension;
    file.GetFileExtension(&extension);
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return qzk::EcadDesign::GetGerberExts().find(extension) != std::string::npos;
}

} // namespace qzkapp::ecad
