// List counts in kernel notices: a count larger than the message could hold is malformed and
// reported as such, before anything is allocated for it, in every decoder that reads a list.
#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionObserver.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzref/Messages.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using qzk::ecad::BaseSceneObserver;

dom::MessageData Message(std::function<void(dom::ObserverProxy&)> const& push) {
    dom::ObserverProxy proxy;
    proxy.Begin();
    push(proxy);
    proxy.End();
    return proxy.TakeMessage();
}

struct BoardRecorder : qzk::ecad::PCBSceneObserver {
    void DetachObserver() override {}
    void OnAppearanceChanged(std::set<qzk::ecad::PCBAppearance> const& on,
                             std::set<qzk::ecad::PCBAppearance> const& off) override {
        log.push_back("look " + std::to_string(on.size()) + " " + std::to_string(off.size()));
    }
    void OnIsolate(std::vector<qzk::ecad::AppearanceItem> const& items, bool) override {
        log.push_back("isolate " + std::to_string(items.size()));
    }
    void OnIsolateLayers(std::vector<short> const& layers, bool) override {
        log.push_back("layers " + std::to_string(layers.size()));
    }
    std::vector<std::string> log;
};

// Anything but the documented text (a bad_alloc included) escapes and fails the test.
std::string Deliver(BoardRecorder& observer, unsigned char id, dom::MessageData const& message) {
    dom::MessageReader reader(message);
    try {
        observer.HandleEvent(id, reader);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "";
}

// An item as a kernel scene writes it: object pointer, two handles, interface pointer.
void PushItem(dom::ObserverProxy& p) {
    p.PushUInt32Value(0);
    p.PushUInt32Value(0);
    p.PushUInt16Value(1);
    p.PushUInt16Value(2);
    p.PushUInt32Value(0);
    p.PushUInt32Value(0);
}

TEST(NoticeCount, BoardListCountsBeyondTheMessageAreMalformedAndExactCountsDecode) {
    unsigned char const look = BaseSceneObserver::AppearanceChangedEventId;
    unsigned char const isolate = BaseSceneObserver::IsolateEventId;
    unsigned char const layers = BaseSceneObserver::IsolateLayersEventId;
    auto malformed = [](unsigned char id) {
        return "qzk::ecad::PCBSceneObserver: malformed message " + std::to_string(id);
    };
    BoardRecorder board;

    for (unsigned int count : {0xFFFFFFFFu, 0x40000000u, 3u}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(Deliver(board, look, Message([&](dom::ObserverProxy& p) {
                              p.PushBooleanValue(false);
                              p.PushUInt32Value(count);
                              p.PushUInt32Value(1);
                              p.PushUInt32Value(2);
                          })),
                  malformed(look));
        EXPECT_EQ(Deliver(board, isolate, Message([&](dom::ObserverProxy& p) {
                              p.PushUInt32Value(count);
                              PushItem(p);
                              PushItem(p);
                              p.PushBooleanValue(true);
                          })),
                  malformed(isolate));
        EXPECT_EQ(Deliver(board, layers, Message([&](dom::ObserverProxy& p) {
                              p.PushUInt32Value(count);
                              p.PushUInt16Value(7);
                              p.PushUInt16Value(8);
                          })),
                  malformed(layers));
    }
    EXPECT_TRUE(board.log.empty());

    // The same bytes with honest counts: a count that uses the message up to its last byte is
    // not mistaken for one too large.
    EXPECT_EQ(Deliver(board, look, Message([](dom::ObserverProxy& p) {
                          p.PushBooleanValue(false);
                          p.PushUInt32Value(1);
                          p.PushUInt32Value(1);
                          p.PushUInt32Value(1);
                          p.PushUInt32Value(2);
                      })),
              "");
    EXPECT_EQ(Deliver(board, isolate, Message([](dom::ObserverProxy& p) {
                          p.PushUInt32Value(2);
                          PushItem(p);
                          PushItem(p);
                          p.PushBooleanValue(true);
                      })),
              "");
    EXPECT_EQ(Deliver(board, layers, Message([](dom::ObserverProxy& p) {
                          p.PushUInt32Value(2);
                          p.PushUInt16Value(7);
                          p.PushUInt16Value(8);
                          p.PushBooleanValue(false);
                      })),
              "");
    EXPECT_EQ(board.log, (std::vector<std::string>{"look 1 1", "isolate 2", "layers 2"}));
}

class SelectionRecorder : public qzk::SelectionObserver {
public:
    ~SelectionRecorder() override { DetachFromMessageLoop(); }
    void OnSelectionChanged(unsigned int, bool,
                            std::vector<du::SmartPtr<qzk::SelectionItem>> const&,
                            std::vector<du::SmartPtr<qzk::SelectionItem>> const& added) override {
        heard.push_back(added.size());
    }
    std::vector<std::size_t> heard;
};

TEST(NoticeCount, SelectionNoticeWithAHugeCountIsDroppedWithoutReservingForIt) {
    SelectionRecorder recorder;
    for (unsigned int count : {0xFFFFFFFFu, 0x20000000u}) {
        dom::MessageData message = Message([&](dom::ObserverProxy& p) {
            p.PushUInt8Value(qzk::SelectionObserver::SelectionChangedId);
            p.PushUInt32Value(1);
            p.PushBooleanValue(false);
            p.PushUInt32Value(0);
            p.PushUInt32Value(count);
        });
        dom::MessageReader reader(message);
        EXPECT_NO_THROW(recorder.EventHandler(reader));
    }
    EXPECT_TRUE(recorder.heard.empty());

    dom::MessageData empty = Message([](dom::ObserverProxy& p) {
        p.PushUInt8Value(qzk::SelectionObserver::SelectionChangedId);
        p.PushUInt32Value(1);
        p.PushBooleanValue(true);
        p.PushUInt32Value(0);
        p.PushUInt32Value(0);
    });
    dom::MessageReader reader(empty);
    recorder.EventHandler(reader);
    EXPECT_EQ(recorder.heard, (std::vector<std::size_t>{0}));
}

} // namespace
