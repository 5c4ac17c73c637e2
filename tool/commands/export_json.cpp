#include "export_json.hpp"

#include <boost/json/array.hpp>

#include <utility>

#include "render/json_text.hpp"
#include "render/node_json.hpp"

namespace vx::tool {

namespace json = boost::json;

json::object treeJson(const Session& session)
{
    json::array nodes;
    nodes.reserve(session.tree().nodes().size());
    for (const core::Node* node : session.tree().nodes()) {
        nodes.push_back(nodeJson(*node));
    }
    json::array releases;
    for (const auto& [index, set] : session.releaseChanges()) {
        releases.push_back(releaseJson(index, set));
    }
    return {{"root", session.tree().root()->fullName()},
            {"nodes", std::move(nodes)},
            {"releaseChanges", std::move(releases)},
            {"settingPathList", stringsJson(session.settingPathList())}};
}

void exportJson(const Session& session, Output& out)
{
    writeJson(treeJson(session), out);
}

}  // namespace vx::tool
