#include <gtest/gtest.h>
#include <zip.h>

#include <bundle_maker.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace {

std::filesystem::path testFolder()
{
    auto folder = std::filesystem::path(testing::TempDir()) / ("bundles." + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    return folder;
}

}  // namespace

std::string makeArchive(const std::map<std::string, std::string>& files)
{
    const auto path = testFolder() / "archive.zip";
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [name, content] : files) {
        zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
    }
    if (zip_close(archive) != 0) {
        throw std::runtime_error(zip_strerror(archive));
    }
    return readTestFile(path);
}

std::string writeTestFile(const std::string& name, const std::string& content)
{
    const auto path = testFolder() / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string readTestFile(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
