// The host's search dialog and result pane state, kept by a scene and handed back.
//
// The copy constructor shares the two query objects with its source; assignment copies their
// content into this record's own objects, so after an assignment nothing is shared. A getter
// returns a second reference to the held object: changing it changes the record.
#pragma once

#include "component/ComponentExport.h"
#include "du/SmartPtr.h"
#include "queryinterface/SimpleQuery.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT SearchQueryInfo {
public:
    SearchQueryInfo();
    SearchQueryInfo(SearchQueryInfo const& other);
    SearchQueryInfo& operator=(SearchQueryInfo const& other);
    virtual ~SearchQueryInfo();

    // Forgets everything: both flags false and two new, empty queries.
    void Init();

    bool GetIsDlgVisible() const { return isDlgVisible; }
    void SetIsDlgVisible(bool visible) { isDlgVisible = visible; }
    bool GetIsPanePopulated() const { return isPanePopulated; }
    void SetIsPanePopulated(bool populated) { isPanePopulated = populated; }

    du::SmartPtr<queryinterface::SimpleQuery> GetDlgLastConfig() { return dlgLastConfig; }
    du::SmartPtr<queryinterface::SimpleQuery> GetLastAppliedQuery() { return lastAppliedQuery; }
    // Copy the content of query into the held object, whose identity stays. query must not be
    // null.
    void SetDlgLastConfig(du::SmartPtr<queryinterface::SimpleQuery> query);
    void SetLastAppliedQuery(du::SmartPtr<queryinterface::SimpleQuery> query);

private:
    bool isDlgVisible;
    du::SmartPtr<queryinterface::SimpleQuery> dlgLastConfig;
    bool isPanePopulated;
    du::SmartPtr<queryinterface::SimpleQuery> lastAppliedQuery;
};

} // namespace qzkapp::ecad
