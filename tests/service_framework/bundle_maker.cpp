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
    const zipFile archive = zipOpen(path.c_str(), APPEND_STATUS_CREATE);
    for (const auto& [name, content] : files) {
        zipOpenNewFileInZip(archive, name.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                            Z_DEFAULT_COMPRESSION);
        zipWriteInFileInZip(archive, content.data(), static_cast<unsigned>(content.size()));
        zipCloseFileInZip(archive);
    }
    if (zipClose(archive, nullptr) != ZIP_OK) {
        throw std::runtime_error("cannot write " + path.string());
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
