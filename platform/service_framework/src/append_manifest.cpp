// Appends a zip archive with a bundle's manifest to its linked library, in place of one that is there
// already.
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
#include <memory>
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

[[noreturn]] void throwZipError(zip_error_t* error)
{
    throw std::runtime_error(std::string("The zip archive cannot be made: ") + zip_error_strerror(error));
}

std::string makeArchive(const std::string& entryName, const std::string& content)
{
    zip_error_t error;
    zip_error_init(&error);
    const std::unique_ptr<zip_source_t, void (*)(zip_source_t*)> target(
        zip_source_buffer_create(nullptr, 0, 0, &error), zip_source_free);
    if (!target) {
        throwZipError(&error);
    }
    zip_source_keep(target.get());  // the archive takes one hold of it, the reading below needs the other
    zip_t* archive = zip_open_from_source(target.get(), ZIP_TRUNCATE, &error);
    if (!archive) {
        throwZipError(&error);
    }
    zip_source_t* entry = zip_source_buffer(archive, content.data(), content.size(), 0);
    const zip_int64_t index = zip_file_add(archive, entryName.c_str(), entry, ZIP_FL_ENC_UTF_8);
    // A fixed time makes equal inputs give equal bundle files.
    if (index < 0 || zip_file_set_mtime(archive, static_cast<zip_uint64_t>(index), 315532800, 0) != 0 ||
        zip_close(archive) != 0)
    {
        throwZipError(zip_get_error(archive));
    }

    zip_stat_t size;
    if (zip_source_open(target.get()) != 0 || zip_source_stat(target.get(), &size) != 0) {
        throwZipError(zip_source_error(target.get()));
    }
    std::string bytes(size.size, '\0');
    const zip_int64_t count = zip_source_read(target.get(), bytes.data(), bytes.size());
    zip_source_close(target.get());
    if (count < 0 || static_cast<std::size_t>(count) != bytes.size()) {
        throwZipError(zip_source_error(target.get()));
    }
    return bytes;
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
    const std::string archive = makeArchive(symbolicName + "/manifest.json", manifest);

    const std::string content = readFile(library);
    const auto bytes = std::as_bytes(std::span(content));
    if (!isLibrary(bytes)) {
        throw std::runtime_error(library + ": not a shared library");
    }
    const std::size_t length = findArchive(bytes).value_or(content.size());
    std::filesystem::resize_file(library, length);
    std::ofstream stream(library, std::ios::binary | std::ios::app);
    stream.write(archive.data(), static_cast<std::streamsize>(archive.size()));
    if (!stream.flush()) {
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
