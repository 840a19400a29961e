#include "cell/XCellTable.h"
#include "cell/XDocumentFile.h"
#include "fuzzTarget.h"

using namespace std::chrono_literals;
using huge::XCellImageMode;
using huge::XCellTable;
using huge::XDocumentFile;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::TimeLimit limit(300ms);
    fuzz::accepted([&] {
        const std::vector<uint8_t> bytes = fuzz::bytesOf(data, size);
        const XDocumentFile document = XDocumentFile::fromVector(bytes);
        fuzz::require(document.toVector() == bytes);
        XCellTable table(xstd::XRect(0, 0, 15, 15), 4);
        table.fromVector(document.table, XCellImageMode::Everything);
        table.toJson();
    });
    return 0;
}
