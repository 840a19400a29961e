#include "cell/XCellRawExtend.h"
#include "fuzzTarget.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    huge::XCellRawExtend format;
    fuzz::accepted([&] {
        format.fromBinary(fuzz::bytesOf(data, size));
        const std::vector<uint8_t> image = format.toBinary();
        huge::XCellRawExtend again;
        again.fromBinary(image);
        fuzz::require(again.toBinary() == image);
        again.fromJson(format.toJson());
    });
    return 0;
}
