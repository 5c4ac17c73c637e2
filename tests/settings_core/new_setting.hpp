#pragma once

#include <settings_core/settings_tree.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tests {

using Properties = vx::core::Node::Properties;

inline Properties noProperties()
{
    return {false, false, {}, {}, {}, false, false, {}};
}

/// A tree "root" with the one setting "root.Setting".
struct NewSetting
{
    explicit NewSetting(const Properties& properties) : tree("root")
    {
        tree.root()->createFactorySetting("Setting", true, properties);
    }

    [[nodiscard]] const vx::core::Node& operator*() const { return *tree.find("root.Setting"); }

    vx::core::SettingsTree tree;
};

template <class T>
foundation::verdixdata::Array row(const std::vector<T>& values)
{
    auto array = foundation::verdixdata::ArrayFactory().createArray<T>({1, values.size()});
    std::copy(values.begin(), values.end(), array.begin());
    return array;
}

template <class T>
foundation::verdixdata::Array scalar(T value)
{
    return row<T>({value});
}

inline foundation::verdixdata::Array text(std::string value)
{
    return verdix::settings::internal::charvec(std::move(value));
}

inline foundation::verdixdata::Array texts(std::vector<std::string> values)
{
    return verdix::settings::internal::cellstr(std::move(values));
}

inline foundation::verdixdata::Array string(std::string value)
{
    return foundation::verdixdata::ArrayFactory().createScalarInternal(std::move(value));
}

}  // namespace tests
