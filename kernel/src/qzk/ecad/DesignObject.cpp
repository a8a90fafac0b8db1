#include "qzk/ecad/DesignObject.h"

#include "qzref/DesignObjects.h"

namespace qzk::ecad {

dg::DBox2D DesignShape::GetRange() const {
    dg::DBox2D box;
    auto const& p = points;
    auto const add = [&box](double x, double y, double grow) {
        box.Extend(dg::DBox2D(dg::DPoint2D(x - grow, y - grow), dg::DPoint2D(x + grow, y + grow)));
    };
    switch (kind) {
    case Arc:
    case Circle:
        if (p.size() >= 3) {
            add(p[0], p[1], p[2] + width / 2);
        }
        break;
    case Pad:
        if (p.size() >= 4) {
            box.Extend(dg::DPoint2D(p[0] - p[2] / 2, p[1] - p[3] / 2));
            box.Extend(dg::DPoint2D(p[0] + p[2] / 2, p[1] + p[3] / 2));
        }
        break;
    default:
        for (std::size_t i = 0; i + 1 < p.size(); i += 2) {
            add(p[i], p[i + 1], kind == Line ? width / 2 : 0);
        }
    }
    return box;
}

DesignObject::DesignObject(int type, std::string name) : type(type), name(std::move(name)) {
    qzref::DesignObjects::Enter(this, this->name);
}

DesignObject::~DesignObject() {
    qzref::DesignObjects::Leave(this);
}

} // namespace qzk::ecad
