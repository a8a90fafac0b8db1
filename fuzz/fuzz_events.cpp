// Every observer family's decoding on arbitrary message bytes. The first input byte picks the
// observer, the second is the event id, the rest are the message's wire bytes. A message that
// cannot be decoded must end in a std::runtime_error with one of the documented texts; any other
// exception, a crash or an out-of-bounds read is a finding.
#include "board/PCBSceneObserver.h"
#include "compare/CompareSceneObserver.h"
#include "compare/PCBCompareSceneObserver.h"
#include "compare/PCBOvlCompareSceneObserver.h"
#include "compare/PCBSchCompareSceneObserver.h"
#include "compare/SchematicCompareSceneObserver.h"
#include "design/SceneObserver.h"
#include "dom/MessageReader.h"
#include "qzk/AnnotationSetObserver.h"
#include "qzk/SelectionObserver.h"
#include "qzk/WorldObserver.h"
#include "qzk/ecad/PCBCompareSceneObserver.h"
#include "qzk/ecad/PCBCompareViewObserver.h"
#include "qzk/ecad/PCBOvlCompareSceneObserver.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzk/ecad/PCBSchCompareSceneObserver.h"
#include "qzk/ecad/PCBViewObserver.h"
#include "qzk/ecad/SchematicCompareSceneObserver.h"
#include "qzk/ecad/SchematicCompareViewObserver.h"
#include "qzk/ecad/SchematicSceneObserver.h"
#include "qzk/ecad/SchematicViewObserver.h"
#include "scene/BaseSceneObserver.h"
#include "schematic/SchematicSceneObserver.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

template <class Base> struct Concrete : Base {
    ~Concrete() override { this->DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

template <class Base> struct Plain : Base {
    ~Plain() override { this->DetachFromMessageLoop(); }
};

bool Documented(std::string const& text) {
    return text.find(": malformed message ") != std::string::npos ||
           text.rfind("Failed to retrieve ", 0) == 0 || text.rfind("Unrecognised ", 0) == 0;
}

template <class Observer> void Deliver(dom::MessageData const& message) {
    Observer observer;
    dom::MessageReader reader(message);
    try {
        observer.EventHandler(reader);
    } catch (std::runtime_error const& error) {
        if (!Documented(error.what())) {
            std::fprintf(stderr, "undocumented decoding error: %s\n", error.what());
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    dom::MessageData message;
    message.bytes.push_back('b');
    message.bytes.push_back(static_cast<char>(data[1]));
    message.bytes.append(reinterpret_cast<char const*>(data) + 2, size - 2);
    // Room for the objects a kernel notice may carry; null, as a host could never see otherwise.
    message.objects.resize(4);

    switch (data[0] % 23) {
    case 0:
        Deliver<Concrete<qzkapp::ecad::BaseSceneObserver>>(message);
        break;
    case 1:
        Deliver<Concrete<qzkapp::ecad::SceneObserver>>(message);
        break;
    case 2:
        Deliver<Concrete<qzkapp::ecad::CompareSceneObserver>>(message);
        break;
    case 3:
        Deliver<Concrete<qzkapp::ecad::PCBSceneObserver>>(message);
        break;
    case 4:
        Deliver<Concrete<qzk::ecad::PCBSceneObserver>>(message);
        break;
    case 5:
        Deliver<Concrete<qzk::ecad::SchematicSceneObserver>>(message);
        break;
    case 6:
        Deliver<Concrete<qzk::ecad::PCBCompareSceneObserver>>(message);
        break;
    case 7:
        Deliver<Concrete<qzk::ecad::PCBOvlCompareSceneObserver>>(message);
        break;
    case 8:
        Deliver<Concrete<qzk::ecad::PCBSchCompareSceneObserver>>(message);
        break;
    case 9:
        Deliver<Concrete<qzk::ecad::SchematicCompareSceneObserver>>(message);
        break;
    case 10:
        Deliver<Concrete<qzk::ecad::PCBViewObserver>>(message);
        break;
    case 11:
        Deliver<Concrete<qzk::ecad::SchematicViewObserver>>(message);
        break;
    case 12:
        Deliver<Concrete<qzk::ecad::PCBCompareViewObserver>>(message);
        break;
    case 13:
        Deliver<Concrete<qzk::ecad::SchematicCompareViewObserver>>(message);
        break;
    case 14:
        Deliver<Plain<qzk::SelectionObserver>>(message);
        break;
    case 15:
        Deliver<Plain<qzk::WorldObserver>>(message);
        break;
    case 16:
        Deliver<Concrete<qzk::AnnotationSetObserver>>(message);
        break;
    case 17:
        Deliver<Concrete<qzkapp::ecad::SchematicSceneObserver>>(message);
        break;
    case 18:
        Deliver<Concrete<qzkapp::ecad::PCBCompareSceneObserver>>(message);
        break;
    case 19:
        Deliver<Concrete<qzkapp::ecad::SchematicCompareSceneObserver>>(message);
        break;
    case 20:
        Deliver<Concrete<qzkapp::ecad::PCBSchCompareSceneObserver>>(message);
        break;
    case 21:
        Deliver<Concrete<qzkapp::ecad::PCBOvlCompareSceneObserver>>(message);
        break;
    default: {
        // The id as the kernel's own notices start: no 'b' before it.
        message.bytes.erase(0, 1);
        Deliver<Plain<qzk::SelectionObserver>>(message);
    }
    }
    return 0;
}
