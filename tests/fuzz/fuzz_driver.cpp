// The stand-alone driver of a fuzz target for builds without libFuzzer: runs the
// target once on every file named on the command line, or found in a directory
// named there. The smoke runs of the test suite use it on the committed corpus.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

int RunFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return 1;
    }
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // An exactly sized block, so that a read behind the input is caught.
    std::vector<uint8_t> exact(bytes);
    LLVMFuzzerTestOneInput(exact.empty() ? nullptr : exact.data(), exact.size());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    int runs = 0;
    int failures = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path arg(argv[i]);
        if (std::filesystem::is_directory(arg)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(arg)) {
                if (!entry.is_regular_file()) continue;
                failures += RunFile(entry.path());
                ++runs;
            }
        } else {
            failures += RunFile(arg);
            ++runs;
        }
    }
    std::printf("%d inputs run\n", runs);
    return failures != 0 || runs == 0 ? 1 : 0;
}
