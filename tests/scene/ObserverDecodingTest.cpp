// Decoding of event messages by the observer classes: relative ids, payload widths, and the
// exact failure texts.
#include "SceneFixture.h"
#include "compare/CompareSceneObserver.h"
#include "design/SceneObserver.h"
#include "dom/ObserverProxy.h"
#include "scene/BaseScene.h"
#include "scene/BaseSceneObserver.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace {

// The first id of every scene; a scene's own ids are protected, the test scene opens them.
unsigned char FirstId() {
    return scenetest::TestScene::DRAWORDER_CHANGED_EVENT();
}

class BaseRecorder : public qzkapp::ecad::BaseSceneObserver {
public:
    void DetachObserver() override {}
    void OnHighlightChanged(unsigned int count) override {
        text = "highlight " + std::to_string(count);
    }
    void OnAssocHighlightColorChanged(unsigned int c) override {
        text = "assoc " + std::to_string(c);
    }
    std::string text;
};

class DesignRecorder : public qzkapp::ecad::SceneObserver {
public:
    void DetachObserver() override {}
    void OnDesignLoaded(unsigned short error, du::Symbol const& message) override {
        text = "loaded " + std::to_string(error) + " " + message.str();
    }
    void OnImageChanged(unsigned int source) override { text = "image " + std::to_string(source); }
    std::string text;
};

class CompareRecorder : public qzkapp::ecad::CompareSceneObserver {
public:
    void DetachObserver() override {}
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& message) override {
        text = std::string("loaded ") + (second ? "second " : "first ") + std::to_string(error) +
               " " + message.str();
    }
    std::string text;
};

// Builds one message with the id consumed, as the kernel's EventHandler leaves it.
dom::MessageData Message(std::function<void(dom::ObserverProxy&)> const& push) {
    dom::ObserverProxy proxy;
    proxy.Begin();
    push(proxy);
    proxy.End();
    return proxy.TakeMessage();
}

std::string ErrorOf(std::function<void()> const& call) {
    try {
        call();
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "no error";
}

TEST(ObserverDecoding, PayloadsDecodeRelativeToTheKernelsFirstFreeId) {
    unsigned char const n = FirstId();
    ASSERT_NE(n, 0); // absolute numbering would show here

    BaseRecorder base;
    auto count = Message([](dom::ObserverProxy& p) { p.PushUInt32Value(0xFFFFFFFEu); });
    dom::MessageReader countReader(count);
    base.HandleEvent(n + 1, countReader);
    EXPECT_EQ(base.text, "highlight 4294967294"); // written unsigned, read as int, handed on

    DesignRecorder design;
    auto loaded = Message([](dom::ObserverProxy& p) {
        p.PushUInt16Value(7);
        p.PushStringValue("no such file");
    });
    dom::MessageReader loadedReader(loaded);
    design.HandleEvent(n + 4, loadedReader);
    EXPECT_EQ(design.text, "loaded 7 no such file");

    CompareRecorder compare;
    auto both = Message([](dom::ObserverProxy& p) {
        p.PushBooleanValue(true);
        p.PushUInt16Value(0);
        p.PushStringValue("");
    });
    dom::MessageReader bothReader(both);
    compare.HandleEvent(n + 4, bothReader);
    EXPECT_EQ(compare.text, "loaded second 0 ");
}

TEST(ObserverDecoding, OneTagMeansAnImageToADesignAndNothingToACompareFamily) {
    unsigned char const c = FirstId() + 6;
    auto source = Message([](dom::ObserverProxy& p) { p.PushUInt32Value(3); });
    DesignRecorder design;
    dom::MessageReader designReader(source);
    design.HandleEvent(c, designReader);
    EXPECT_EQ(design.text, "image 3");

    CompareRecorder compare;
    dom::MessageReader compareReader(source);
    EXPECT_EQ(ErrorOf([&] { compare.HandleEvent(c, compareReader); }),
              "Unrecognised qzkapp::ecad::CompareSceneObserver tag <" + std::to_string(c) + ">.");
    EXPECT_TRUE(compare.text.empty());
}

TEST(ObserverDecoding, UnknownTagsAndShortPayloadsRaiseTheirTexts) {
    unsigned char const n = FirstId();
    auto empty = Message([](dom::ObserverProxy&) {});
    auto wrongWidth = Message([](dom::ObserverProxy& p) { p.PushUInt16Value(1); });
    auto numberOnly = Message([](dom::ObserverProxy& p) { p.PushUInt16Value(1); });
    auto flagOnly = Message([](dom::ObserverProxy& p) { p.PushBooleanValue(false); });

    struct Case {
        std::function<void(dom::MessageReader&)> call;
        dom::MessageData const* message;
        std::string text;
    };
    BaseRecorder base;
    DesignRecorder design;
    CompareRecorder compare;
    std::vector<Case> const cases = {
        {[&](auto& r) { base.HandleEvent(n + 1, r); }, &empty,
         "Failed to retrieve the number of highlighted objects"},
        {[&](auto& r) { base.HandleEvent(n + 2, r); }, &wrongWidth,
         "Failed to retrieve the change source"},
        {[&](auto& r) { base.HandleEvent(n + 3, r); }, &empty,
         "Failed to retrieve associated highlight color"},
        {[&](auto& r) { base.HandleEvent(n + 4, r); }, &empty,
         "Unrecognised qzkapp::ecad::BaseSceneObserver tag <" + std::to_string(n + 4) + ">."},
        {[&](auto& r) { design.HandleEvent(n + 4, r); }, &empty,
         "Failed to retrieve the error number"},
        // A failure on a later value also means no handler call.
        {[&](auto& r) { design.HandleEvent(n + 4, r); }, &numberOnly,
         "Failed to retrieve the error string"},
        {[&](auto& r) { design.HandleEvent(n + 5, r); }, &empty,
         "Failed to retrieve the change source"},
        {[&](auto& r) { design.HandleEvent(n + 6, r); }, &empty,
         "Failed to retrieve the change source"},
        {[&](auto& r) { design.HandleEvent(n + 7, r); }, &empty,
         "Unrecognised qzkapp::ecad::SceneObserver tag <" + std::to_string(n + 7) + ">."},
        {[&](auto& r) { compare.HandleEvent(n + 4, r); }, &empty,
         "Failed to retrieve the second flag"},
        {[&](auto& r) { compare.HandleEvent(n + 4, r); }, &flagOnly,
         "Failed to retrieve the error number"},
        {[&](auto& r) { compare.HandleEvent(n + 5, r); }, &empty,
         "Failed to retrieve the change source"},
    };
    for (Case const& c : cases) {
        dom::MessageReader reader(*c.message);
        EXPECT_EQ(ErrorOf([&] { c.call(reader); }), c.text);
    }
    EXPECT_TRUE(base.text.empty());
    EXPECT_TRUE(design.text.empty());
    EXPECT_TRUE(compare.text.empty());

    // Tags below the family's first go to the kernel's observer, which knows its own.
    dom::MessageReader reader(empty);
    EXPECT_EQ(ErrorOf([&] { design.HandleEvent(n - 1, reader); }), "no error");
}

} // namespace
