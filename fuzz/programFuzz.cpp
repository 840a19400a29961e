#include "fuzzTarget.h"
#include "script/XScriptRunner.h"

using namespace std::chrono_literals;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::TimeLimit limit(200ms);
    fuzz::accepted([&] {
        const auto program =
            std::make_shared<const huge::XScriptProgram>(fuzz::bytesOf(data, size));
        huge::XScriptRunner(program, nullptr).run().toString();
    });
    return 0;
}
