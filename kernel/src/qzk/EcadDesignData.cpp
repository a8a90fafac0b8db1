#include "qzk/EcadDesignData.h"

namespace qzk {

EcadDesignData::EcadDesignData(du::Symbol name) : name_(std::move(name)) {}

EcadDesignData::~EcadDesignData() = default;

du::Symbol EcadDesignData::GetDesignName() const {
    return name_;
}

} // namespace qzk
