// Runs a fuzz target over every file of a folder, and over damaged copies of each. The name of the file that
// ends it stands last in the output.

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <fuzz/fuzzing.hpp>
#include <iostream>
#include <iterator>
#include <vector>

namespace {

using Bytes = std::vector<char>;

void run(const Bytes& bytes)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// The input cut off, and with one bit turned, at places spread over it.
void runDamaged(const Bytes& bytes)
{
    constexpr std::size_t places = 8;  // one for each bit of a byte
    for (std::size_t place = 0; place < places && !bytes.empty(); ++place) {
        const std::size_t at = place * bytes.size() / places;
        run({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at)});
        Bytes turned = bytes;
        turned[at] = static_cast<char>(turned[at] ^ (1 << place));
        run(turned);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    namespace fs = std::filesystem;
    if (argc != 2 || !fs::is_directory(argv[1])) {
        std::cerr << "Give the folder with the inputs.\n";
        return 2;
    }
    std::size_t count = 0;
    for (const fs::path& input : fs::directory_iterator(argv[1])) {
        std::cout << input.filename().string() << std::endl;
        ++count;
        std::ifstream stream(input, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
        run(bytes);
        runDamaged(bytes);
    }
    std::cout << count << " inputs, each whole and damaged\n";
    return count == 0 ? 1 : 0;
}
