#pragma once

#include <boost/interprocess/file_mapping.hpp>
#include <boost/interprocess/mapped_region.hpp>

#include <cstddef>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>

namespace cppmicroservices {

/// A file mapped read-only into memory. The constructor throws std::runtime_error naming the file when it
/// cannot be read.
class MappedFile
{
public:
    explicit MappedFile(const std::string& file) : region_(map(file)) {}

    std::span<const std::byte> Bytes() const
    {
        return {static_cast<const std::byte*>(region_.get_address()), region_.get_size()};
    }

private:
    static boost::interprocess::mapped_region map(const std::string& file)
    {
        namespace ipc = boost::interprocess;
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error)) {
            throw std::runtime_error(file + (error ? ": " + error.message() : ": not a regular file"));
        }
        if (std::filesystem::is_empty(file, error)) {
            return {};
        }
        try {
            return {ipc::file_mapping(file.c_str(), ipc::read_only), ipc::read_only};
        } catch (const ipc::interprocess_exception& failure) {
            throw std::runtime_error(file + ": " + failure.what());
        }
    }

    boost::interprocess::mapped_region region_;
};

}  // namespace cppmicroservices
