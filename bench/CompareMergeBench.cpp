// The merge of two boards' layer stacks into compare rows, at n sublayers per board, next to a
// floor measured in the same run: std::sort of the same 2n sublayers by their key. Half the
// sublayers of the second board share their identity word with the first board's, so the merge
// makes pairs and one-sided rows alike. bench/ratios.py gives the ratios.
#include "compare/BoardCompareMerge.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SublayerPCB.h"
#include "qzref/Journal.h"
#include "qzref/Platform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using qzk::ecad::EcadPCBData;
using qzk::ecad::SublayerPCBBase;

// Design-own handles from 33, below the region handles (1000 up), so that identity decides.
short const kFirstHandle = 33;
int const kPerLayer = 900;

du::SmartPtr<EcadPCBData> MakeBoard(std::size_t n, bool second) {
    auto board = EcadPCBData::Create(du::Symbol(second ? "second" : "first"), false);
    for (std::size_t i = 0; i < n; ++i) {
        auto const layer = static_cast<short>(2 + i / kPerLayer);
        auto const handle = static_cast<short>(kFirstHandle + i % kPerLayer);
        if (i % kPerLayer == 0) {
            board->AddLayer(layer, "L" + std::to_string(layer));
        }
        // Even words on the first board; on the second every other one is odd, so unmatched.
        uint64 const identity = 2 * static_cast<uint64>(i) + (second ? i % 2 : 0);
        std::string const name = std::to_string(layer) + "/" + std::to_string(handle);
        board->AddSublayer(std::make_unique<qzk::ecad::SublayerPCB>(layer, handle, name,
                                                                    0x01808080u, true, identity),
                           name);
    }
    board->SetTopBottom(static_cast<short>(2 + n / kPerLayer), 2);
    return board;
}

class BoardPair {
public:
    explicit BoardPair(std::size_t n) : first(MakeBoard(n, false)), second(MakeBoard(n, true)) {
        qzref::Journal::SetEnabled(false);
    }
    ~BoardPair() { qzref::Journal::SetEnabled(true); }
    BoardPair(BoardPair const&) = delete;
    BoardPair& operator=(BoardPair const&) = delete;

    qzref::ScopedPlatform platform;
    du::SmartPtr<EcadPCBData> first;
    du::SmartPtr<EcadPCBData> second;
};

void PerItem(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

void BM_CompareMerge(benchmark::State& state) {
    BoardPair boards(static_cast<std::size_t>(state.range(0)));
    qzkapp::ecad::CompareRowLook const look{0x010000DC, 0x01DC0000,
                                            qzkapp::ecad::CompareRowLook::kOwnColor,
                                            qzk::ecad::CompareColorVis::eShowAll, true};
    for (auto _ : state) {
        qzk::ecad::CompareColorVisPtrVec rows;
        qzkapp::ecad::MergeBoardSublayers(boards.first, boards.second, look, rows);
        benchmark::DoNotOptimize(rows.data());
    }
    PerItem(state);
}

void BM_CompareMergeFloor(benchmark::State& state) {
    BoardPair boards(static_cast<std::size_t>(state.range(0)));
    std::vector<SublayerPCBBase*> all(boards.first->sublayers.begin(),
                                      boards.first->sublayers.end());
    all.insert(all.end(), boards.second->sublayers.begin(), boards.second->sublayers.end());
    for (auto _ : state) {
        std::vector<SublayerPCBBase*> keys(all);
        std::sort(keys.begin(), keys.end(), qzk::ecad::PointerIsLess<SublayerPCBBase*>());
        benchmark::DoNotOptimize(keys.data());
    }
    PerItem(state);
}

BENCHMARK(BM_CompareMerge)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CompareMergeFloor)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);

} // namespace
