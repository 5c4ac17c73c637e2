#pragma once

// The environment variables and feature switches that factory values depend on. Areas read them; vxsettings
// documents them in its manual page and reports their values.

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace settings::verdix {

/// Name and meaning of an environment variable or a feature switch, for users.
struct Input
{
    const char* name;
    const char* meaning;  ///< how factory values depend on it
};

/// All environment variables that the tree reads; nothing else can be passed to environmentVariable().
enum class EnvironmentInput : unsigned char
{
    cdAnywhereDisabled,
    useAppShell,
    lifecycleLogs,
    count  ///< of the others
};

/// The environment variables, indexed by EnvironmentInput.
inline constexpr std::array<Input, static_cast<std::size_t>(EnvironmentInput::count)> environmentInputs{{
    {"VX_CD_ANYWHERE_DISABLED",
     "If set to true, in any letter case, the factory value of verdix.online.cdAnywhereDisabled is true."},
    {"VX_UI_INTERNAL_FIGURE_USEAPPSHELL", "If set to a value that does not begin with 1, the factory value "
                                          "of verdix.ui.internal.figure.UseAppShell is false."},
    {"VX_WEBWINDOW_LOGS_SPEC",
     "The factory value of verdix.ui.internal.figure.webwindow.LifecycleLogs (default: none)."},
}};

/// All feature switches that the tree queries; nothing else can be passed to featureSwitch().
enum class FeatureInput : unsigned char
{
    webUi,
    count  ///< of the others
};

/// The feature switches, indexed by FeatureInput. Each meaning names the settings with their full paths.
inline constexpr std::array<Input, static_cast<std::size_t>(FeatureInput::count)> featureInputs{{
    {"webui", "If on, the factory value of verdix.ui.internal.dialog.FileDialogs is true."},
}};

/// Whether each input has a name that no other has, and a meaning.
template <std::size_t Count>
consteval bool areComplete(const std::array<Input, Count>& inputs)
{
    for (auto input = inputs.begin(); input != inputs.end(); ++input) {
        const auto hasSameName = [&](const Input& other) {
            return std::string_view(other.name) == input->name;
        };
        if (input->name == nullptr || input->meaning == nullptr || *input->meaning == '\0' ||
            std::any_of(inputs.begin(), input, hasSameName))
        {
            return false;
        }
    }
    return true;
}
static_assert(
    areComplete(environmentInputs) && areComplete(featureInputs),
    "each environment variable and each feature switch needs a line with its own name and a meaning");

}  // namespace settings::verdix
