#include "cli/global_options.hpp"

#include <settings_core/files/input_file.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>

#include "cli/arguments.hpp"

namespace vx::tool {

namespace {

using foundation::log::Severity;

/// The values that the names of an option stand for, in the order in which help lists them.
template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

const Choices<Severity> severities{{"fatal", Severity::fatal},     {"error", Severity::error},
                                   {"warning", Severity::warning}, {"information", Severity::information},
                                   {"debug", Severity::debug},     {"trace", Severity::trace}};

const Choices<ColourChoice> colourChoices{
    {"auto", ColourChoice::automatic}, {"always", ColourChoice::always}, {"never", ColourChoice::never}};

int parseFeatureValue(std::string_view string)
{
    if (string == "on" || string == "off") {
        return string == "on" ? 1 : 0;
    }
    int value = 0;
    const auto [end, error] = std::from_chars(string.data(), string.data() + string.size(), value);
    if (error != std::errc() || end != string.data() + string.size()) {
        throw CLI::ValidationError("--feature", "a feature is on, off or a whole number, not \"" +
                                                    std::string(string) + "\"");
    }
    return value;
}

std::pair<std::string, int> parseFeature(const std::string& argument)
{
    const auto equals = argument.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError("--feature", "needs NAME=VALUE, not \"" + argument + "\"");
    }
    return {argument.substr(0, equals), parseFeatureValue(std::string_view(argument).substr(equals + 1))};
}

std::filesystem::path settingsFile(const std::string& option, const std::string& path)
{
    if (path.empty() || path == core::standardInput) {
        throw CLI::ValidationError(option, "needs a file, which may be missing, not \"" + path + "\"");
    }
    return std::filesystem::absolute(path);
}

/// Adds an option that takes one of the names in `values`, and assigns the value of that name.
template <class Value>
void addChoice(CLI::App& app, const std::string& option, Value& target, const Choices<Value>& values,
               const std::string& help)
{
    std::vector<std::string> names;
    names.reserve(values.size());
    for (const auto& [name, value] : values) {
        names.push_back(name);
    }
    setChoices(*app.add_option_function<std::string>(
                   option,
                   [&target, &values](const std::string& name) {
                       target =
                           std::ranges::find(values, name, &std::pair<std::string, Value>::first)->second;
                   },
                   help),
               names);
}

}  // namespace

std::shared_ptr<const GlobalOptions> addGlobalOptions(CLI::App& app)
{
    auto options = std::make_shared<GlobalOptions>();
    refuseEmpty(*app.add_option("--bundle", options->bundleFile,
                                "Start this bundle file (default: the one installed with vxsettings)")
                     ->type_name("FILE"));
    app.add_option_function<std::vector<std::string>>(
           "--installation",
           [options](const std::vector<std::string>& paths) {
               for (const std::string& path : paths) {
                   options->layerFiles.installation.push_back(settingsFile("--installation", path));
               }
           },
           "Use this installation settings file; may be repeated, the first one wins (default: "
           "verdix/settings.json in each folder of $XDG_CONFIG_DIRS)")
        ->type_name("FILE")
        ->type_size(1)
        ->allow_extra_args(false)
        ->take_all();
    app.add_option_function<std::string>(
           "--personal",
           [options](const std::string& path) {
               options->layerFiles.personal = settingsFile("--personal", path);
           },
           "Use this personal settings file, which set, reset, import, edit and undo change (default: "
           "verdix/settings.json in $XDG_CONFIG_HOME)")
        ->type_name("FILE");
    app.add_option_function<std::vector<std::string>>(
           "--feature",
           [options](const std::vector<std::string>& arguments) {
               for (const std::string& argument : arguments) {
                   options->features.push_back(parseFeature(argument));
               }
           },
           "Set a feature switch before the tree is built: on, off or a whole number")
        ->type_name("NAME=VALUE")
        ->type_size(1)
        ->allow_extra_args(false)
        ->take_all();
    addChoice(app, "--log-level", options->logThreshold, severities,
              "Log messages of at least this severity to standard error (default: warning)");
    app.add_flag_callback(
        "--json", [options] { options->format = OutputFormat::json; },
        "Write one JSON document for programs");
    app.add_flag("--quiet", options->isQuiet, "Print no hints on standard error");
    addChoice(app, "--color", options->colour, colourChoices,
              "Use colours; auto means on a terminal (default: auto)");
    app.add_flag_callback(
        "--no-pager", [options] { options->usesPager = false; },
        "Write to the terminal itself, without $PAGER (default: less)");
    return options;
}

}  // namespace vx::tool
