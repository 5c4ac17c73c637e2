#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/layers.hpp>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "host/session.hpp"

namespace vx::tool {

/// What is wrong with an edited settings file.
struct EditDiagnostics
{
    bool isSettingsFile = true;  ///< false when the text cannot be parsed as one
    std::vector<core::Diagnostic> diagnostics;
};

/// Checks what was edited in a settings file. Problems that the file had before do not count.
class EditCheck
{
public:
    /// `file` is one of `files`, `before` its content before the edit. The session must outlive the check.
    /// Throws when an installation file that may lock settings is damaged.
    EditCheck(const Session& session, const core::LayerFiles& files, std::filesystem::path file,
              const std::string& before);

    /// Returns the new diagnostics of the edited text, which name the settings file.
    [[nodiscard]] EditDiagnostics run(const std::string& text);

private:
    [[nodiscard]] EditDiagnostics checkAll(const std::string& text);
    [[nodiscard]] std::vector<core::Diagnostic> checkLocks(const core::SettingsFile& content);

    const Session& session_;
    std::filesystem::path file_;
    core::Layers lowerLayers_;
    std::multiset<std::string> problemsBefore_;
};

}  // namespace vx::tool
