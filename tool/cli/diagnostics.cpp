#include "cli/diagnostics.hpp"

#include <boost/json/object.hpp>

#include <string>

namespace vx::tool {

namespace {

std::string onOneLine(std::string message)
{
    for (std::size_t at = message.find('\n'); at != std::string::npos; at = message.find('\n', at)) {
        message.replace(at, 1, "; ");
    }
    return message;
}

}  // namespace

void writeDiagnostics(const std::filesystem::path& file, const std::vector<core::FileFault>& diagnostics,
                      Output& out)
{
    for (const core::FileFault& diagnostic : diagnostics) {
        out << file.string() << ':' << diagnostic.position.line << ':' << diagnostic.position.column << ": "
            << diagnostic.path << (diagnostic.path.empty() ? "" : ": ") << onOneLine(diagnostic.message)
            << '\n';
    }
}

boost::json::array diagnosticsJson(const std::vector<core::FileFault>& diagnostics)
{
    boost::json::array list;
    for (const core::FileFault& diagnostic : diagnostics) {
        list.push_back(boost::json::object{{"line", diagnostic.position.line},
                                           {"column", diagnostic.position.column},
                                           {"path", diagnostic.path},
                                           {"message", diagnostic.message}});
    }
    return list;
}

}  // namespace vx::tool
