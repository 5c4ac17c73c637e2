// Appends a zip archive with the bundle manifest to a library that was just linked.
//
//     vx_append_manifest LIBRARY SYMBOLIC_NAME MANIFEST

#include <zip.h>

#include <bundle_file.hpp>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::string readFile(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) {
        throw std::runtime_error(file + ": cannot be read");
    }
    return content;
}

/// Writes a zip archive with one entry.
void writeArchive(const std::string& file, const std::string& entryName, const std::string& content)
{
    // A fixed modification time makes the output reproducible.
    zip_fileinfo information{};
    information.tmz_date = {0, 0, 0, 1, 0, 1980};
    const zipFile archive = zipOpen(file.c_str(), APPEND_STATUS_CREATE);
    if (archive == nullptr ||
        zipOpenNewFileInZip(archive, entryName.c_str(), &information, nullptr, 0, nullptr, 0, nullptr,
                            Z_DEFLATED, Z_DEFAULT_COMPRESSION) != ZIP_OK ||
        zipWriteInFileInZip(archive, content.data(), static_cast<unsigned>(content.size())) != ZIP_OK ||
        zipCloseFileInZip(archive) != ZIP_OK || zipClose(archive, nullptr) != ZIP_OK)
    {
        throw std::runtime_error(file + ": cannot be written");
    }
}

void appendManifest(const std::string& library, const std::string& symbolicName,
                    const std::string& manifestFile)
{
    const std::string manifest = readFile(manifestFile);
    try {
        cppmicroservices::readManifest(manifest, symbolicName);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(manifestFile + ": " + error.what());
    }
    // In a file of its own first, so that the offsets in the archive are relative to its own beginning.
    const std::string archive = library + ".zip";
    writeArchive(archive, symbolicName + "/manifest.json", manifest);
    std::ofstream stream(library, std::ios::binary | std::ios::app);
    if (!(stream << readFile(archive)).flush()) {
        throw std::runtime_error(library + ": cannot be written");
    }
    std::filesystem::remove(archive);
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 3) {
        std::cerr << "Usage: vx_append_manifest LIBRARY SYMBOLIC_NAME MANIFEST\n";
        return 2;
    }
    try {
        appendManifest(arguments[0], arguments[1], arguments[2]);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "vx_append_manifest: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
