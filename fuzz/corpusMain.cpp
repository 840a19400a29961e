// Runs a target over files, where no fuzzer is linked: each argument is a file or a folder of them.

#include "fuzzTarget.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

int runFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            count += runFile(argv[i]);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
            if (entry.is_regular_file())
                count += runFile(entry.path());
        }
    }
    std::printf("%d inputs\n", count);
    return count == 0; // an empty corpus is a mistake in the call
}
