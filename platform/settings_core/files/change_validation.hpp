#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/tree/path_lookup.hpp>

#include <foundation/verdixdata/array.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vx::core {

/// A change that can be made.
struct ValidChange
{
    std::string path;                                         ///< full path
    const Node* setting = nullptr;                            ///< null for a setting that only the file has
    std::optional<foundation::verdixdata::Array> value = {};  ///< the new override; nothing to remove it
};

/// Returns the diagnostic for a lock that keeps a setting or group from being changed.
[[nodiscard]] Diagnostic lockDiagnostic(const Node& node, const SettingLock& lock, const Position& position);

/// Validates changes of one settings file, all of which are to be made at once.
class ChangeValidation
{
public:
    /// All arguments, and the changes, must outlive this object.
    ChangeValidation(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                     Layers& layers, const std::filesystem::path& file)
        : tree_(tree), unknownPaths_(tree, releases), layers_(layers), file_(file)
    {}

    /// Adds a change to changes() or its diagnostic to diagnostics().
    void add(const SettingChange& change);

    /// Returns the changes that can be made.
    [[nodiscard]] std::vector<ValidChange>& changes() noexcept { return changes_; }
    /// Returns what is wrong with the others.
    [[nodiscard]] std::vector<Diagnostic>& diagnostics() noexcept { return diagnostics_; }

private:
    void report(const std::string& path, std::string message, const Position& position);
    [[nodiscard]] const Node* settingOf(const SettingChange& change);
    [[nodiscard]] bool isChangeable(const Node& setting, const SettingChange& change);
    [[nodiscard]] std::optional<foundation::verdixdata::Array> valueOf(const Node& setting,
                                                                       const SettingChange& change);
    [[nodiscard]] std::optional<foundation::verdixdata::Array> parse(const Node& setting,
                                                                     const ValueText& value);
    [[nodiscard]] bool isValid(const Node& setting, const foundation::verdixdata::Array& value,
                               Notation notation, const Position& position);

    const SettingsTree& tree_;
    UnknownPaths unknownPaths_;
    Layers& layers_;
    const std::filesystem::path& file_;
    std::unordered_map<const Node*, const SettingChange*> seen_;
    std::vector<ValidChange> changes_;
    std::vector<Diagnostic> diagnostics_;
};

}  // namespace vx::core
