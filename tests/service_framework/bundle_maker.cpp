#include <zip.h>

#include <bundle_maker.hpp>
#include <stdexcept>
#include <tests/support/files.hpp>

std::string makeArchive(const std::map<std::string, std::string>& files)
{
    const tests::TestFolder folder;
    const auto path = folder / "archive.zip";
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [name, content] : files) {
        zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
    }
    if (zip_close(archive) != 0) {
        throw std::runtime_error(zip_strerror(archive));
    }
    return tests::readFile(path);
}
