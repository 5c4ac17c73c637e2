#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <tests/support/outside_core.hpp>
#include <tests/support/outside_nodes.hpp>
#include <utility>

namespace tests {

namespace {

using settings::core::detail::FactorySettingProperties;

class OutsideNode final : public settings::core::MSettings
{
public:
    OutsideNode(OutsideCore& core, std::string path) : core_(core), path_(std::move(path)) {}

    [[nodiscard]] std::string getFullName() const override
    {
        record("name " + path_);
        return path_;
    }

    boost::shared_ptr<MSettings> createFactorySetting(const std::string& name, bool isSetting,
                                                      const FactorySettingProperties& properties) override
    {
        const std::string path = path_ + "." + name;
        record((isSetting ? "setting " : "group ") + path);
        auto node = boost::make_shared<OutsideNode>(core_, path);
        core_.nodes.push_back({path, isSetting, properties, node});
        return node;
    }

private:
    void record(const std::string& request) const
    {
        if (core_.requests.size() == core_.refuseAt) {
            throw Refused{core_.refuseAt};
        }
        core_.requests.push_back(request);
    }

    OutsideCore& core_;
    std::string path_;
};

/// Bytes that are neither zeros nor an address.
std::array<std::byte, 256> otherContent()
{
    std::array<std::byte, 256> bytes{};
    bytes.fill(std::byte{0xA5});
    return bytes;
}

}  // namespace

struct OutsideCore::Memory
{
    std::array<std::byte, 256> before = otherContent();
    verdix::settings::FactoryGroup root;
    std::array<std::byte, 256> behind = otherContent();
};

OutsideCore::OutsideCore(std::string rootName) : memory_(std::make_unique<Memory>()), root(memory_->root)
{
    root.settingsNode = boost::make_shared<OutsideNode>(*this, rootName);
    root.treeContext = boost::make_shared<int>(0);
    root.name = std::move(rootName);
}

OutsideCore::OutsideCore(settings::core::FactorySettingsLoader& loader)
    : OutsideCore(loader.getRootGroupName())
{
    loader.createTree(root);
}

OutsideCore::~OutsideCore() = default;

bool OutsideCore::isIntactAroundRoot() const
{
    return memory_->before == otherContent() && memory_->behind == otherContent();
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
