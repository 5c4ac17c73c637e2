#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <tests/damage/damage.hpp>

namespace tests {

namespace fs = std::filesystem;

std::size_t damagedImages()
{
    const char* const wanted = std::getenv("VX_DAMAGE");
    return wanted != nullptr && wanted == std::string_view("full") ? 10000 : 1000;
}

std::string Damage::of(std::string_view bytes, std::size_t begin)
{
    std::string damaged(bytes);
    while (damaged == bytes) {
        for (std::size_t left = 1 + below(3); left > 0; --left) {
            fault(damaged, begin);
        }
    }
    return damaged;
}

void Damage::fault(std::string& bytes, std::size_t begin)
{
    if (bytes.size() <= begin) {
        return;
    }
    const std::size_t at = begin + below(bytes.size() - begin);
    const std::size_t length = 1 + below(std::min<std::size_t>(64, bytes.size() - at));
    const std::size_t other = begin + below(bytes.size() - begin);
    switch (below(6)) {
    case 0:
        bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(1U << below(8)));
        break;
    case 1:
        std::generate_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), length,
                        [this] { return static_cast<char>(below(256)); });
        break;
    case 2:
        bytes.erase(at, length);
        break;
    case 3:
        bytes.insert(other, bytes.substr(at, length));
        break;
    case 4:
        bytes.replace(at, length, bytes.substr(other, length));
        break;
    default:
        bytes.resize(at);
        break;
    }
}

TestFolder::TestFolder()
{
    const fs::path memory = "/dev/shm";
    std::string pattern =
        ((fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "damage_XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void writeFile(const fs::path& file, std::string_view bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace tests
