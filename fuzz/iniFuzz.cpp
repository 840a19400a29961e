#include "common/XIniDecoder.h"
#include "fuzzTarget.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::accepted([&] {
        const xstd::XKVNode tree = xstd::XIniDecoder().parse(fuzz::textOf(data, size));
        tree.toIni();
    });
    return 0;
}
