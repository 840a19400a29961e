// What a change costs in tables of the shapes that people build. Each figure is one edit of a cell,
// as an undoable action, with the recalculation that it causes.

#include "cell/XCellActionInsert.h"
#include "cell/XCellActionMoveRect.h"
#include "cell/XCellActionRemove.h"
#include "cell/XCellActionSetText.h"
#include "cell/XCellTable.h"
#include "cell/cellName.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

class BenchTable {
public:
    BenchTable(int32_t rows, int32_t cols) : table(xstd::XRect(0, 0, rows, cols), 4) {}

    void set(int32_t row, int32_t col, const std::string& text)
    {
        huge::XCellActionSetText(&table, row, col, text, false).do_();
    }
    /// Puts a formula in without running it; recalcAll runs them all.
    void put(int32_t row, int32_t col, const std::string& text)
    {
        huge::XCell* cell = table.forceCell(row, col);
        cell->setText_(table, text);
        table.linkCell(cell);
    }
    void recalcAll()
    {
        xstd::XMergedRects changed;
        table.recalcAll(changed);
    }
    /// Times edits of one cell that give it a new number each time.
    void edit(benchmark::State& state, int32_t row, int32_t col)
    {
        int64_t number = 0;
        for (auto _ : state)
            set(row, col, std::to_string(++number));
    }

    huge::XCellTable table;
};

std::unique_ptr<BenchTable> chain(int32_t length)
{
    auto sheet = std::make_unique<BenchTable>(length, 16);
    sheet->set(0, 0, "1");
    for (int32_t row = 1; row < length; ++row)
        sheet->put(row, 0, huge::cellName(row - 1, 0) + "+1");
    sheet->recalcAll();
    return sheet;
}

void chainOf10000(benchmark::State& state)
{
    chain(10000)->edit(state, 0, 0);
}

void fanOf100000(benchmark::State& state)
{
    BenchTable sheet(100000, 16);
    sheet.set(0, 0, "1");
    for (int32_t row = 0; row < 100000; ++row)
        sheet.put(row, 1, "$A$1+1");
    sheet.recalcAll();
    sheet.edit(state, 0, 0);
}

void gridOf300By300(benchmark::State& state)
{
    BenchTable sheet(304, 304);
    for (int32_t i = 0; i < 300; ++i) {
        sheet.set(0, i, "1");
        sheet.set(i, 0, "1");
    }
    for (int32_t row = 1; row < 300; ++row) {
        for (int32_t col = 1; col < 300; ++col)
            sheet.put(row, col, huge::cellName(row, col - 1) + "+" + huge::cellName(row - 1, col));
    }
    sheet.recalcAll();
    sheet.edit(state, 0, 1);
}

void runningSumsOf1000(benchmark::State& state)
{
    BenchTable sheet(1024, 16);
    for (int32_t row = 0; row < 1000; ++row) {
        sheet.set(row, 0, std::to_string(row));
        sheet.put(row, 1, "sum(A$1:" + huge::cellName(row, 0) + ")");
    }
    sheet.recalcAll();
    sheet.edit(state, 0, 0);
}

/// An edit that one cell reads, in a table whose other formulas it does not concern.
void editAmong100000(benchmark::State& state)
{
    const auto sheet = chain(100000);
    sheet->set(5, 5, "A99999+1");
    sheet->set(6, 6, "F6");
    int64_t number = 0;
    for (auto _ : state)
        sheet->set(5, 5, "A99999+" + std::to_string(++number));
}

void enteringAChainOf10000(benchmark::State& state)
{
    for (auto _ : state) {
        BenchTable sheet(10000, 16);
        sheet.set(0, 0, "1");
        for (int32_t row = 1; row < 10000; ++row)
            sheet.set(row, 0, huge::cellName(row - 1, 0) + "+1");
    }
}

/// One step of an action: done, taken back or done again; the other steps are not timed.
enum Step { Do, Undo, Redo };

template <class MakeAction>
void timeStep(benchmark::State& state, MakeAction make)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<huge::XCellAction> action = make();
        if (state.range(0) != Do)
            action->do_();
        if (state.range(0) == Redo)
            action->undo_();
        state.ResumeTiming();
        if (state.range(0) == Do)
            action->do_();
        else if (state.range(0) == Undo)
            action->undo_();
        else
            action->redo_();
        state.PauseTiming();
        if (state.range(0) != Undo)
            action->undo_();
        action.reset();
        state.ResumeTiming();
    }
}

void insertRowAbove100000(benchmark::State& state)
{
    const auto sheet = chain(100000);
    timeStep(state,
             [&] { return std::make_unique<huge::XCellActionInsertRow>(&sheet->table, 0, 1); });
}

void removeRowAbove100000(benchmark::State& state)
{
    const auto sheet = chain(100000);
    sheet->table.resizeMainRect(xstd::XRect(0, 0, 100016, 16));
    huge::XCellActionInsertRow(&sheet->table, 0, 1).do_();
    timeStep(state,
             [&] { return std::make_unique<huge::XCellActionRemoveRow>(&sheet->table, 0, 1); });
}

/// 1,000 rows of 100 formulas, each of which reads the cell to its left and the one above.
void insertRowAboveBlock(benchmark::State& state)
{
    BenchTable sheet(1040, 112);
    for (int32_t row = 1; row <= 1000; ++row) {
        sheet.set(row, 0, "1");
        for (int32_t col = 1; col <= 100; ++col)
            sheet.put(row, col, huge::cellName(row, col - 1) + "-" + huge::cellName(row - 1, col));
    }
    sheet.recalcAll();
    timeStep(state,
             [&] { return std::make_unique<huge::XCellActionInsertRow>(&sheet.table, 0, 1); });
}

void moveBlockOf10000(benchmark::State& state)
{
    BenchTable sheet(1040, 112);
    for (int32_t row = 0; row < 100; ++row) {
        for (int32_t col = 0; col < 100; ++col) {
            sheet.set(row, col, std::to_string(row));
            sheet.put(row + 500, col, huge::cellName(row, col) + "+1");
        }
    }
    sheet.recalcAll();
    timeStep(state, [&] {
        return std::make_unique<huge::XCellActionMoveRect>(&sheet.table, xstd::XRect(0, 0, 99, 99),
                                                           150, 3, xstd::XOptions{huge::optPlain});
    });
}

/// A row of a table of the greatest size that holds two cells.
void insertRowInEmptyTable(benchmark::State& state)
{
    BenchTable sheet(huge::XCellPos::maxRow, huge::XCellPos::maxCol);
    sheet.set(5, 5, "A3+1");
    sheet.set(1000000, 3, "F6");
    timeStep(state,
             [&] { return std::make_unique<huge::XCellActionInsertRow>(&sheet.table, 2, 1); });
}

/// What a document of 100,000 formulas costs: a chain, or 1,000 rows of running products.
std::unique_ptr<BenchTable> document(int64_t shape)
{
    if (shape == 0)
        return chain(100000);
    auto sheet = std::make_unique<BenchTable>(1040, 112);
    for (int32_t row = 0; row < 1000; ++row) {
        sheet->set(row, 0, std::to_string(row));
        for (int32_t col = 1; col <= 100; ++col)
            sheet->put(row, col, huge::cellName(row, col - 1) + "*2+$A$1");
    }
    sheet->recalcAll();
    return sheet;
}

void writeImageOf100000(benchmark::State& state)
{
    const auto sheet = document(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(sheet->table.toVector());
}

void readImageOf100000(benchmark::State& state)
{
    const auto sheet = document(state.range(0));
    const std::vector<uint8_t> image = sheet->table.toVector();
    for (auto _ : state)
        sheet->table.fromVector(image, huge::XCellImageMode::Everything);
}

void writeJsonOf100000(benchmark::State& state)
{
    const auto sheet = document(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(sheet->table.toJson().toJson());
}

void steps(benchmark::internal::Benchmark* bench)
{
    bench->ArgName("step")->Arg(Do)->Arg(Undo)->Arg(Redo)->Unit(benchmark::kMillisecond);
}

BENCHMARK(insertRowAbove100000)->Apply(steps);
BENCHMARK(removeRowAbove100000)->Apply(steps);
BENCHMARK(insertRowAboveBlock)->Apply(steps);
BENCHMARK(moveBlockOf10000)->Apply(steps);
BENCHMARK(insertRowInEmptyTable)->Apply(steps);
BENCHMARK(writeImageOf100000)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);
BENCHMARK(readImageOf100000)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);
BENCHMARK(writeJsonOf100000)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);
BENCHMARK(chainOf10000)->Unit(benchmark::kMillisecond);
BENCHMARK(fanOf100000)->Unit(benchmark::kMillisecond);
BENCHMARK(gridOf300By300)->Unit(benchmark::kMillisecond);
BENCHMARK(runningSumsOf1000)->Unit(benchmark::kMillisecond);
BENCHMARK(editAmong100000)->Unit(benchmark::kMillisecond);
BENCHMARK(enteringAChainOf10000)->Unit(benchmark::kMillisecond);

} // namespace
