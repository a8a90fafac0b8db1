#include "qzk/ecad/DesignObject.h"

#include "qzref/DesignObjects.h"

namespace qzk::ecad {

DesignObject::DesignObject(int type, std::string name) : type(type), name(std::move(name)) {
    qzref::DesignObjects::Enter(this, this->name);
}

DesignObject::~DesignObject() {
    qzref::DesignObjects::Leave(this);
}

} // namespace qzk::ecad
