// Appends a zip archive with the bundle manifest to a linked library. An archive that is already there is
// replaced.
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
#include <string_view>
#include <vector>

namespace {

using cppmicroservices::findArchive;
using cppmicroservices::isLibrary;
using cppmicroservices::readManifest;

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

/// Returns the bytes of a zip archive with one entry. The archive is written to a temporary file, so that its
/// offsets are relative to its own beginning: a reader needs no more than the archive, and the length of the
/// library in front of it does not matter.
std::string makeArchive(const std::string& file, const std::string& entryName, const std::string& content)
{
    writeArchive(file, entryName, content);
    std::string archive = readFile(file);
    std::filesystem::remove(file);
    return archive;
}

/// Returns the length of the library in bytes, without its archive.
std::size_t libraryLength(const std::string& library)
{
    const std::string content = readFile(library);
    const auto bytes = std::as_bytes(std::span(content));
    if (!isLibrary(bytes)) {
        throw std::runtime_error(library + ": not a shared library");
    }
    const std::size_t length = findArchive(bytes).value_or(content.size());
    if (length == 0) {
        throw std::runtime_error(
            library + ": the offsets in its zip archive are relative to the library, so the end of the "
                      "library cannot be found; link the library again");
    }
    return length;
}

void appendManifest(const std::string& library, const std::string& symbolicName,
                    const std::string& manifestFile)
{
    const std::string manifest = readFile(manifestFile);
    try {
        readManifest(manifest, symbolicName);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(manifestFile + ": " + error.what());
    }
    const std::size_t length = libraryLength(library);
    const std::string archive = makeArchive(library + ".zip", symbolicName + "/manifest.json", manifest);
    std::filesystem::resize_file(library, length);
    std::ofstream stream(library, std::ios::binary | std::ios::app);
    if (!stream.write(archive.data(), static_cast<std::streamsize>(archive.size())).flush()) {
        throw std::runtime_error(library + ": cannot be written");
    }
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
