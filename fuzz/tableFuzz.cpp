#include "cell/XCellTable.h"
#include "fuzzTarget.h"

using namespace std::chrono_literals;
using huge::XCellImageMode;
using huge::XCellTable;

namespace {

const xstd::XRect smallRect(0, 0, 15, 15);

std::vector<uint8_t> imageOf(const std::vector<uint8_t>& image)
{
    XCellTable table(smallRect, 4);
    table.fromVector(image, XCellImageMode::Everything);
    return table.toVector();
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::TimeLimit limit(300ms);
    fuzz::accepted([&] {
        const std::vector<uint8_t> written = imageOf(fuzz::bytesOf(data, size));
        fuzz::accepted([&] { imageOf(written); });
    });
    return 0;
}
