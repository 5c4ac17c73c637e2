#include "faults.hpp"

#include <boost/json/object.hpp>

#include <string>

namespace vx::tool {

namespace {

std::string onOneLine(std::string text)
{
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at)) {
        text.replace(at, 1, "; ");
    }
    return text;
}

}  // namespace

void writeFaults(const std::filesystem::path& file, const std::vector<core::FileFault>& faults, Output& out)
{
    for (const core::FileFault& fault : faults) {
        out << file.string() << ':' << fault.position.line << ':' << fault.position.column << ": "
            << fault.path << (fault.path.empty() ? "" : ": ") << onOneLine(fault.message) << '\n';
    }
}

boost::json::array faultsJson(const std::vector<core::FileFault>& faults)
{
    boost::json::array list;
    for (const core::FileFault& fault : faults) {
        list.push_back(boost::json::object{{"line", fault.position.line},
                                           {"column", fault.position.column},
                                           {"path", fault.path},
                                           {"message", fault.message}});
    }
    return list;
}

}  // namespace vx::tool
