#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <stdexcept>
#include <tests/support/outside_core.hpp>
#include <utility>

namespace tests {

namespace {

class OutsideNode final : public settings::core::MSettings
{
public:
    OutsideNode(OutsideCore& core, std::string path) : core_(core), path_(std::move(path)) {}

    [[nodiscard]] std::string getFullName() const override { return path_; }

    boost::shared_ptr<MSettings>
    createFactorySetting(const std::string& name, bool isSetting,
                         const settings::core::detail::FactorySettingProperties& properties) override
    {
        if (core_.nodes.size() == core_.refuseAt) {
            throw Refused{core_.refuseAt};
        }
        core_.nodes.push_back({path_ + "." + name, isSetting, properties});
        return boost::make_shared<OutsideNode>(core_, path_ + "." + name);
    }

private:
    OutsideCore& core_;
    std::string path_;
};

}  // namespace

OutsideCore::OutsideCore(std::string rootName)
    : root(boost::make_shared<int>(0), nullptr, boost::make_shared<OutsideNode>(*this, rootName),
           std::move(rootName))
{}

OutsideCore::OutsideCore(settings::core::FactorySettingsLoader& loader)
    : OutsideCore(loader.getRootGroupName())
{
    loader.createTree(root);
}

const CreatedNode& OutsideCore::at(const std::string& path) const
{
    const auto found = std::ranges::find(nodes, path, &CreatedNode::path);
    if (found == nodes.end()) {
        throw std::out_of_range("no node was created at " + path);
    }
    return *found;
}

}  // namespace tests
