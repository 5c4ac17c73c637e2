#include <cstdlib>
#include <fstream>
#include <iterator>
#include <tests/support/files.hpp>

namespace tests {

namespace fs = std::filesystem;

TestFolder::TestFolder()
{
    const fs::path memory = "/dev/shm";
    std::string pattern =
        ((fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "vx_test_XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TestFolder::with(std::string_view name, std::string_view bytes) const
{
    writeFile(path_ / name, bytes);
    return path_ / name;
}

void writeFile(const fs::path& file, std::string_view bytes)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace tests
