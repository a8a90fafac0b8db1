// Highlight and Isolate of n items on a loaded board (journal off), next to a floor measured in
// the same run: the same keys inserted into two std::sets (the layer's set and the kernel's store
// of looks) through one virtual call per item. bench/ratios.py turns the JSON output into the
// ratios to the floor and the growth of the per-item cost from 1e3 to 1e6.
#include "board/PCBScene.h"
#include "component/SceneApiFactory.h"
#include "dg/DPoint3D.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzref/Journal.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <benchmark/benchmark.h>

#include <set>
#include <string>
#include <vector>

namespace {

using Items = std::vector<du::SmartPtr<qzk::SelectionItem>>;

// A started platform with a board scene made as a host makes it, and n distinct items of its
// components (the handles tell them apart).
class LoadedBoard {
public:
    explicit LoadedBoard(std::size_t n) {
        qzref::Journal::SetEnabled(false);
        du::SmartPtr<qzkapp::ecad::SceneApiFactory> factory(new qzkapp::ecad::SceneApiFactory());
        bool flag = false;
        std::string const path = std::string(QZ_EXAMPLES_DIR) + "/designs/four-layer-board.json";
        kernel_ = du::DynamicCast<qzk::ecad::PCBScene>(
            factory->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("bench"),
                                 qzk::ViewableSource::Create(du::Symbol(path)), 74, flag));
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        api_ = dynamic_cast<qzkapp::ecad::PCBScene*>(kernel_->GetApiScene());
        auto const& data = api_->GetDesignData();
        void* const objects[] = {data->FindObject("U1"), data->FindObject("R1"),
                                 data->FindObject("C1"), data->FindObject("MH1")};
        items_.reserve(n);
        for (std::size_t i = 0; i < n; ++i) {
            std::size_t const rest = i / 4;
            items_.push_back(du::SmartPtr<qzk::SelectionItem>(new qzk::ecad::SelectionItem(
                data, objects[i % 4], nullptr, nullptr, dg::DPoint3D(),
                static_cast<short>(rest % 30000), static_cast<short>(rest / 30000))));
        }
    }
    ~LoadedBoard() {
        items_.clear();
        kernel_->DestroyScene();
        qzref::Messages::PumpUntilIdle();
        qzref::Journal::SetEnabled(true);
    }
    LoadedBoard(LoadedBoard const&) = delete;
    LoadedBoard& operator=(LoadedBoard const&) = delete;

    qzkapp::ecad::PCBScene& Api() const { return *api_; }
    Items const& GetItems() const { return items_; }

private:
    qzref::ScopedPlatform platform_;
    du::SmartPtr<qzk::ecad::PCBScene> kernel_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    Items items_;
};

void PerItem(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_BoardHighlight(benchmark::State& state) {
    LoadedBoard board(static_cast<std::size_t>(state.range(0)));
    du::SmartPtr<qzk::Operation> const none;
    for (auto _ : state) {
        state.PauseTiming();
        board.Api().ClearHighlights(none);
        state.ResumeTiming();
        board.Api().Highlight(board.GetItems(), none);
    }
    PerItem(state);
}

void BM_BoardIsolate(benchmark::State& state) {
    LoadedBoard board(static_cast<std::size_t>(state.range(0)));
    du::SmartPtr<qzk::Operation> const none;
    for (auto _ : state) {
        state.PauseTiming();
        board.Api().ClearAllIsolated(none);
        state.ResumeTiming();
        board.Api().Isolate(board.GetItems(), none);
    }
    PerItem(state);
}

// The floor's one virtual call per item.
class KeySink {
public:
    virtual ~KeySink() = default;
    virtual void Insert(qzk::ecad::AppearanceItem const& key) = 0;
};

class TwoSets : public KeySink {
public:
    void Insert(qzk::ecad::AppearanceItem const& key) override {
        layerSet.insert(key);
        kernelSet.insert(key);
    }
    std::set<qzk::ecad::AppearanceItem> layerSet;
    std::set<qzk::ecad::AppearanceItem> kernelSet;
};

void BM_BoardFloor(benchmark::State& state) {
    LoadedBoard board(static_cast<std::size_t>(state.range(0)));
    std::vector<qzk::ecad::AppearanceItem> keys;
    keys.reserve(board.GetItems().size());
    for (auto const& item : board.GetItems()) {
        keys.emplace_back(du::DynamicCast<qzk::ecad::SelectionItem>(item));
    }
    TwoSets sets;
    KeySink* sink = &sets;
    benchmark::DoNotOptimize(sink);
    for (auto _ : state) {
        state.PauseTiming();
        sets.layerSet.clear();
        sets.kernelSet.clear();
        state.ResumeTiming();
        for (auto const& key : keys) {
            sink->Insert(key);
        }
        benchmark::ClobberMemory();
    }
    PerItem(state);
}

void Sizes(benchmark::internal::Benchmark* b) {
    b->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_BoardFloor)->Apply(Sizes);
BENCHMARK(BM_BoardHighlight)->Apply(Sizes);
BENCHMARK(BM_BoardIsolate)->Apply(Sizes);

} // namespace
