#include "common/XJsonDecoder.h"
#include "fuzzTarget.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::accepted([&] {
        const xstd::XJson tree = xstd::XJsonDecoder().parse(fuzz::textOf(data, size));
        const xstd::XString text = tree.toJson();
        fuzz::require(xstd::XJsonDecoder().parse(text).toJson() == text);
        fuzz::require(xstd::XJsonDecoder().parse(tree.toJson(0, 2)).toJson() == text);
    });
    return 0;
}
