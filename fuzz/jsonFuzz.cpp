#include "common/XJsonDecoder.h"
#include "fuzzTarget.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::accepted([&] {
        // A control byte is written as two digits and reads back as these: what holds, holds from
        // the first written text on.
        const xstd::XString first = xstd::XJsonDecoder().parse(fuzz::textOf(data, size)).toJson();
        const xstd::XJson tree = xstd::XJsonDecoder().parse(first);
        const xstd::XString text = tree.toJson();
        fuzz::require(xstd::XJsonDecoder().parse(text).toJson() == text);
        fuzz::require(xstd::XJsonDecoder().parse(tree.toJson(0, 2)).toJson() == text);
    });
    return 0;
}
