#include "qzref/GerberOverlay.h"

#include "IcmApiEcad.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/DesignObject.h"
#include "qzref/GerberReader.h"

#include <map>
#include <memory>

namespace qzref {

namespace {

constexpr short kFilmLayer = 2;
constexpr short kFilmSublayer = 33;

std::uint64_t IdentityOf(std::string const& name) {
    std::uint64_t hash = 14695981039346656037ull;
    for (unsigned char c : name) {
        hash = (hash ^ c) * 1099511628211ull;
    }
    return hash;
}

// The value of the film's .FileFunction attribute, or "Film".
std::string FileFunction(std::string_view text) {
    std::string_view const key = "%TF.FileFunction,";
    std::size_t const at = text.find(key);
    if (at == std::string_view::npos) {
        return "Film";
    }
    std::size_t const end = text.find('*', at);
    std::string value(
        text.substr(at + key.size(), end == std::string_view::npos ? 0 : end - at - key.size()));
    return value.empty() ? "Film" : value;
}

// Turns the reader's stream of shapes into the overlay's objects.
class Builder {
public:
    explicit Builder(qzk::ecad::EcadPCBData& film) : film_(film) {}

    void Sublayer(short handle, std::string const& name) {
        film_.AddSublayer(std::make_unique<qzk::ecad::SublayerPCB>(
                              kFilmLayer, handle, name, 0x01FFFFFF, true, IdentityOf(name)),
                          name);
    }

    void Add(DesignShape&& shape, GerberReader::Names const& names) {
        if (run_ == nullptr || names != runNames_) {
            Start(names);
        }
        run_->geometry.push_back(std::move(shape));
    }

private:
    short SublayerFor(std::string const& function) {
        if (function.empty()) {
            return kFilmSublayer;
        }
        auto const found = functions_.find(function);
        if (found != functions_.end()) {
            return found->second;
        }
        auto const handle = static_cast<short>(kFilmSublayer + 1 + functions_.size());
        functions_.emplace(function, handle);
        Sublayer(handle, function);
        return handle;
    }

    DesignObject* Object(int type, std::string name, DesignObject* owner) {
        DesignObject* object = film_.Add(std::make_unique<DesignObject>(type, std::move(name)));
        object->owner = owner;
        if (owner != nullptr) {
            owner->children.push_back(object);
        }
        return object;
    }

    struct Component {
        DesignObject* object;
        DesignObject* footprint;
    };

    Component& ComponentNamed(std::string const& name) {
        auto found = components_.find(name);
        if (found == components_.end()) {
            DesignObject* const component =
                film_.AddComponent(std::make_unique<DesignObject>(IcmApiEcad::COMPONENT, name));
            component->layer = kFilmLayer;
            DesignObject* const footprint =
                Object(IcmApiEcad::FOOTPRINT, name + " footprint", component);
            footprint->layer = kFilmLayer;
            found = components_.emplace(name, Component{component, footprint}).first;
        }
        return found->second;
    }

    DesignObject* NetNamed(std::string const& name) {
        auto found = nets_.find(name);
        if (found == nets_.end()) {
            found =
                nets_
                    .emplace(name,
                             film_.AddNet(std::make_unique<DesignObject>(IcmApiEcad::NET, name)))
                    .first;
        }
        return found->second;
    }

    // A shape object of owner, or owner itself the first time when it is to hold shapes itself.
    DesignObject* Part(int type, DesignObject* owner) {
        int& count = parts_[owner];
        ++count;
        return Object(type, owner->name + ":" + std::to_string(count), owner);
    }

    void Start(GerberReader::Names const& names) {
        runNames_ = names;
        DesignObject* net = names.net.empty() ? nullptr : NetNamed(names.net);
        if (!names.pin.empty()) {
            std::string const pinName = names.component + "." + names.pin;
            Component& component = ComponentNamed(names.component);
            auto pin = pins_.find(pinName);
            if (pin == pins_.end()) {
                run_ = Object(IcmApiEcad::PIN, pinName, component.object);
                pins_.emplace(pinName, run_);
                if (net != nullptr) {
                    net->children.push_back(run_);
                }
            } else {
                run_ = Part(IcmApiEcad::SHAPE, pin->second);
            }
        } else if (!names.component.empty()) {
            run_ = Part(IcmApiEcad::SHAPE, ComponentNamed(names.component).footprint);
        } else if (net != nullptr) {
            run_ = Part(IcmApiEcad::WIRE, net);
        } else {
            run_ = Part(IcmApiEcad::SHAPE, ComponentNamed("ARTWORK").footprint);
        }
        run_->layer = kFilmLayer;
        run_->sublayer = SublayerFor(names.function);
    }

    qzk::ecad::EcadPCBData& film_;
    DesignObject* run_ = nullptr;
    GerberReader::Names runNames_;
    std::map<std::string, short> functions_;
    std::map<std::string, Component> components_;
    std::map<std::string, DesignObject*> nets_;
    std::map<std::string, DesignObject*> pins_;
    std::map<DesignObject const*, int> parts_;
};

} // namespace

du::SmartPtr<qzk::ecad::EcadPCBData> ReadGerberOverlay(std::string_view text,
                                                       std::string const& name,
                                                       std::function<void(int)> const& progress) {
    auto film = qzk::ecad::EcadPCBData::Create(du::Symbol(name), true);
    GerberReader reader(text);
    Builder builder(*film);
    // The layer must be there before the first sublayer, which comes with the first shape; its
    // name is looked up ahead of the read.
    film->AddLayer(kFilmLayer, FileFunction(text));
    builder.Sublayer(kFilmSublayer, "Film");
    reader.Read([&](DesignShape&& shape,
                    GerberReader::Names const& names) { builder.Add(std::move(shape), names); },
                progress);
    film->SetTopBottom(kFilmLayer, kFilmLayer);
    dg::DBox2D const range = film->GetRange();
    if (!range.IsEmpty()) {
        film->minX = range.low.x;
        film->minY = range.low.y;
        film->maxX = range.high.x;
        film->maxY = range.high.y;
    }
    return film;
}

} // namespace qzref
