#include <zip.h>

#include <bundle_maker.hpp>
#include <stdexcept>
#include <tests/support/files.hpp>

std::string makeArchive(const std::map<std::string, std::string>& files)
{
    const tests::TestFolder folder;
    const auto path = folder / "archive.zip";
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
    return tests::readFile(path);
}
