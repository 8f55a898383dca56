// SPDX-License-Identifier: MIT
// Runs a fuzz target over files and folders of files, for compilers without libFuzzer.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// NOLINTNEXTLINE(readability-redundant-declaration): without a header, as libFuzzer declares it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

int replayed = 0;

void replay(const std::filesystem::path &path)
{
    if (std::filesystem::is_directory(path)) {
        for (const auto &entry : std::filesystem::directory_iterator(path))
            replay(entry.path());
        return;
    }
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes { std::istreambuf_iterator<char>(file), {} };
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    ++replayed;
}

} // namespace

// A file that cannot be read ends the replay with the exception that says so.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i)
        replay(argv[i]);
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
