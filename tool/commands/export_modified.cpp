#include "export_modified.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/secret_settings.hpp>

#include <cstddef>
#include <string>

#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"

namespace vx::tool {

namespace {

using core::Node;

/// Writes the file, and returns the number of secrets that it leaves out.
std::size_t writeModified(const Session& session, core::Layers& layers, bool withSecrets, Output& out)
{
    const auto release = session.publishedRelease();
    const core::SettingsFile empty(core::emptySettingsFile(release ? formatReleaseName(*release) : ""));
    core::SettingsFileEdit file(empty);
    std::size_t leftOut = 0;
    for (const Node* node : session.tree().nodes()) {
        const auto modified =
            node->kind() == core::NodeKind::setting ? modifiedValue(layers, *node) : std::nullopt;
        if (!modified) {
            continue;
        }
        if (core::isSecret(node->fullName()) && !withSecrets) {
            ++leftOut;
        } else {
            file.set(node->getFullName(),
                     core::valueToJson(modified->value, core::constraintOf(node->properties())));
        }
    }
    out << Exact{file.text()};
    return leftOut;
}

}  // namespace

void exportModified(const Session& session, core::Layers& layers, Output& out)
{
    if (const std::size_t leftOut = writeModified(session, layers, false, out); leftOut != 0) {
        out.flush();
        printHint(std::to_string(leftOut) + (leftOut == 1 ? " secret" : " secrets") +
                  " left out; add --secrets to export them too");
    }
}

void exportModifiedWithSecrets(const Session& session, core::Layers& layers, Output& out)
{
    writeModified(session, layers, true, out);
}

}  // namespace vx::tool
