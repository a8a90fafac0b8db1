#include "qzref/DesignObject.h"

#include "qzref/DesignObjects.h"

namespace qzref {

DesignObject::DesignObject(int type, std::string name) : type(type), name(std::move(name)) {
    DesignObjects::Enter(this, this->name);
}

DesignObject::~DesignObject() {
    DesignObjects::Leave(this);
}

} // namespace qzref
