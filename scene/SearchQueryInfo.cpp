#include "scene/SearchQueryInfo.h"

namespace qzkapp::ecad {
namespace {

void CopyContent(du::SmartPtr<queryinterface::SimpleQuery> const& target,
                 du::SmartPtr<queryinterface::SimpleQuery> const& source) {
    if (target && source) {
        *target = *source;
    }
}

} // namespace

SearchQueryInfo::SearchQueryInfo()
    : isDlgVisible(false), dlgLastConfig(nullptr), isPanePopulated(false),
      lastAppliedQuery(nullptr) {
    Init();
}

SearchQueryInfo::SearchQueryInfo(SearchQueryInfo const& other)
    : isDlgVisible(other.isDlgVisible), dlgLastConfig(other.dlgLastConfig),
      isPanePopulated(other.isPanePopulated), lastAppliedQuery(other.lastAppliedQuery) {}

SearchQueryInfo& SearchQueryInfo::operator=(SearchQueryInfo const& other) {
    isDlgVisible = other.isDlgVisible;
    isPanePopulated = other.isPanePopulated;
    if (this != &other) {
        CopyContent(dlgLastConfig, other.dlgLastConfig);
        CopyContent(lastAppliedQuery, other.lastAppliedQuery);
    }
    return *this;
}

SearchQueryInfo::~SearchQueryInfo() = default;

void SearchQueryInfo::Init() {
    isDlgVisible = false;
    isPanePopulated = false;
    dlgLastConfig = du::MakeCounted<queryinterface::SimpleQuery>();
    lastAppliedQuery = du::MakeCounted<queryinterface::SimpleQuery>();
}

void SearchQueryInfo::SetDlgLastConfig(du::SmartPtr<queryinterface::SimpleQuery> query) {
    CopyContent(dlgLastConfig, query);
}

void SearchQueryInfo::SetLastAppliedQuery(du::SmartPtr<queryinterface::SimpleQuery> query) {
    CopyContent(lastAppliedQuery, query);
}

} // namespace qzkapp::ecad
