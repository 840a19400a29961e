#include "fuzzTarget.h"
#include "script/XScript.h"

using namespace std::chrono_literals;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::TimeLimit limit(200ms);
    fuzz::accepted([&] {
        huge::XScript script(fuzz::textOf(data, size));
        script.compile();
        script.run(nullptr).toString();
    });
    return 0;
}
