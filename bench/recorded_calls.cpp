#include <builder/factory_node.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <bench/recorded_calls.hpp>
#include <utility>

namespace bench {

namespace {

class RecordingNode final : public settings::core::MSettings
{
public:
    RecordingNode(std::vector<Call>& calls, std::size_t number, std::string path)
        : calls_(calls), number_(number), path_(std::move(path))
    {}

    [[nodiscard]] std::string getFullName() const override { return path_; }

    Handle createFactorySetting(const std::string& name, bool isSetting,
                                const Properties& properties) override
    {
        calls_.push_back({number_, name, isSetting, properties});
        return boost::make_shared<RecordingNode>(calls_, calls_.size(), path_ + "." + name);
    }

private:
    std::vector<Call>& calls_;
    std::size_t number_;
    std::string path_;
};

}  // namespace

RecordedCalls::RecordedCalls(settings::core::FactorySettingsLoader& loader)
{
    const std::string root = loader.getRootGroupName();
    createTreeUnder(loader, boost::make_shared<RecordingNode>(calls_, 0, root), root);
}

void RecordedCalls::replay(const Handle& root) const
{
    std::vector<Handle> made;
    made.reserve(calls_.size() + 1);
    made.push_back(root);
    for (const Call& call : calls_) {
        made.push_back(made[call.parent]->createFactorySetting(call.name, call.isSetting, call.properties));
    }
}

void createTreeUnder(settings::core::FactorySettingsLoader& loader, const Handle& group, std::string name)
{
    verdix::settings::detail::IndexMemory memory;
    verdix::settings::FactoryGroup root(nullptr, nullptr, group, std::move(name), &memory);
    loader.createTree(root);
}

}  // namespace bench
