// Runs a fuzz target once over every file of a folder. The name of the file that ends it stands last in the
// output.

#include <filesystem>
#include <fstream>
#include <fuzz/fuzzing.hpp>
#include <iostream>
#include <iterator>
#include <vector>

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
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::cout << count << " inputs\n";
    return count == 0 ? 1 : 0;
}
