#include "cell/XCellActionSetDatas.h"
#include "cell/XCellTable.h"
#include "fuzzTarget.h"

using namespace std::chrono_literals;
using huge::XCellImageMode;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::TimeLimit limit(300ms);
    xstd::XMergedRects rects;
    std::map<xstd::XPoint, std::vector<uint8_t>> datas;
    fuzz::accepted([&] {
        huge::XCellTable::rectsFromVector(fuzz::bytesOf(data, size), rects, datas);
        huge::XCellTable table(xstd::XRect(0, 0, 15, 15), 4);
        const xstd::XMergedRects target(xstd::XRect(2, 2, 2, 2));
        huge::XCellActionSetDatas paste(&table, target, datas, XCellImageMode::Everything, rects);
        fuzz::accepted([&] { paste.do_(); });
        paste.undo_();
        fuzz::require(table.collectCells({table.mainRect()}, {huge::optAll}).empty());
    });
    return 0;
}
