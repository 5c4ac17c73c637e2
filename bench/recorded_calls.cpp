#include <boost/smart_ptr/make_shared.hpp>

#include <bench/recorded_calls.hpp>
#include <utility>

namespace bench {

namespace {

using verdix::settings::FactoryGroup;
using verdix::settings::FactorySetting;

/// The recorded calls, and the number of groups that they create.
struct Recording
{
    std::vector<Call>& calls;
    std::size_t groups = 0;
};

class RecordingNode final : public settings::core::MSettings
{
public:
    RecordingNode(Recording& recording, std::size_t group, std::string path)
        : recording_(recording), group_(group), path_(std::move(path))
    {}

    [[nodiscard]] std::string getFullName() const override { return path_; }

    Handle createFactorySetting(const std::string& name, bool isSetting,
                                const Properties& properties) override
    {
        recording_.calls.push_back({group_, name, isSetting, properties});
        const std::size_t group = isSetting ? 0 : ++recording_.groups;
        return boost::make_shared<RecordingNode>(recording_, group, path_ + "." + name);
    }

private:
    Recording& recording_;
    std::size_t group_;
    std::string path_;
};

/// Computes the full name of a child, as a provider must before it applies options.
void joinFullName(const FactoryGroup& parent, const std::string& name)
{
    std::string path = parent.settingsNode->getFullName();
    path.reserve(path.size() + 1 + name.size());
    path.append(1, '.').append(name);
}

template <class Node>
Node realized(const FactoryGroup& parent, const Call& call)
{
    Node node(parent.treeContext, parent.settingsNode, nullptr, std::string(call.name));
    if (call.properties.aliasName().empty()) {
        joinFullName(parent, node.name);
    }
    node.settingsNode =
        node.parentSettingsNode->createFactorySetting(node.name, node.isSetting(), call.properties);
    return node;
}

}  // namespace

RecordedCalls::RecordedCalls(settings::core::FactorySettingsLoader& loader)
{
    Recording recording{calls_};
    const std::string name = loader.getRootGroupName();
    FactoryGroup root = rootGroup(boost::make_shared<RecordingNode>(recording, 0, name), name);
    loader.createTree(root);
}

void RecordedCalls::buildUnder(FactoryGroup root) const
{
    std::vector<FactoryGroup> groups;
    groups.reserve(calls_.size() + 1);
    groups.push_back(std::move(root));
    for (const Call& call : calls_) {
        FactoryGroup& parent = groups[call.parent];
        if (call.isSetting) {
            auto setting = realized<FactorySetting>(parent, call);
            parent.settings.try_emplace(setting.name, std::move(setting));
        } else {
            auto group = realized<FactoryGroup>(parent, call);
            parent.groups.try_emplace(group.name, group);
            groups.push_back(std::move(group));
        }
    }
}

FactoryGroup rootGroup(const Handle& node, std::string name)
{
    struct TreeContext
    {};
    return {boost::make_shared<TreeContext>(), nullptr, node, std::move(name)};
}

}  // namespace bench
