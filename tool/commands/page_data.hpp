#pragma once

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/tree/node.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <cstddef>
#include <map>
#include <string>

#include "catalog/catalog.hpp"
#include "host/session.hpp"

namespace vx::tool {

/// What the script of the HTML page needs to know beyond what the page shows: the words by which settings are
/// found, values as JSON, constraints, and where old paths lead. Values of secrets that files set are left
/// out.
class PageData
{
public:
    /// The arguments must outlive this object.
    PageData(core::Layers& layers, Catalog& catalog) : layers_(layers), catalog_(catalog) {}

    /// Adds a setting or alias. The page's rows have the order of these calls.
    void add(const core::Node& node);

    /// Returns the data as JSON that may stand in a script element.
    [[nodiscard]] std::string text(const Session& session) const;

private:
    std::string titlesOf(const core::Node& node);
    std::size_t indexOf(const core::Node& setting);

    core::Layers& layers_;
    Catalog& catalog_;
    boost::json::array nodes_;
    boost::json::array constraints_;              // without duplicates
    std::map<std::string, std::size_t> indexes_;  // of the constraints, by their JSON
};

}  // namespace vx::tool
