#include "global_options.hpp"

#include <CLI/CLI.hpp>

#include <charconv>
#include <map>
#include <string_view>

#include "arguments.hpp"

namespace vx::tool {

namespace {

using foundation::log::Severity;

const std::map<std::string, Severity> severities{
    {"fatal", Severity::fatal},     {"error", Severity::error},
    {"warning", Severity::warning}, {"information", Severity::information},
    {"debug", Severity::debug},     {"trace", Severity::trace}};

const std::map<std::string, ColourChoice> colourChoices{
    {"auto", ColourChoice::automatic}, {"always", ColourChoice::always}, {"never", ColourChoice::never}};

const std::map<std::string, OutputForm> forms{{"text", OutputForm::text}, {"json", OutputForm::json}};

int featureValue(std::string_view text)
{
    if (text == "on" || text == "off") {
        return text == "on" ? 1 : 0;
    }
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw CLI::ValidationError("--feature", "a feature is on, off or a whole number, not \"" +
                                                    std::string(text) + "\"");
    }
    return value;
}

std::pair<std::string, int> parseFeature(const std::string& text)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError("--feature", "needs NAME=VALUE, not \"" + text + "\"");
    }
    return {text.substr(0, equals), featureValue(std::string_view(text).substr(equals + 1))};
}

/// The value by its name; names what there is otherwise.
template <class Value>
void addChoice(CLI::App& app, const std::string& option, Value& target,
               const std::map<std::string, Value>& values, const std::string& help)
{
    std::vector<std::string> names;
    names.reserve(values.size());
    for (const auto& [name, value] : values) {
        names.push_back(name);
    }
    limitTo(*app.add_option_function<std::string>(
                option, [&target, &values](const std::string& name) { target = values.at(name); }, help),
            names);
}

}  // namespace

std::shared_ptr<const GlobalOptions> addGlobalOptions(CLI::App& app)
{
    auto options = std::make_shared<GlobalOptions>();
    app.add_option("--bundle", options->bundleFile, "Bundle file to start in place of the command's own")
        ->type_name("FILE");
    const auto addFile = [&app](const char* name, std::filesystem::path& file, const char* help) {
        app.add_option_function<std::string>(
               name, [&file](const std::string& path) { file = std::filesystem::absolute(path); }, help)
            ->type_name("FILE");
    };
    addFile(
        "--installation", options->files.installation,
        "Settings file of the installation; the first $XDG_CONFIG_DIRS/verdix/settings.json when left out");
    addFile("--personal", options->files.personal,
            "Settings file of your own, which set and reset change; $XDG_CONFIG_HOME/verdix/settings.json "
            "when left out");
    app.add_option_function<std::vector<std::string>>(
           "--feature",
           [options](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   options->features.push_back(parseFeature(text));
               }
           },
           "Feature switch to set before the tree is built: on, off or a whole number")
        ->type_name("NAME=VALUE")
        ->type_size(1)
        ->allow_extra_args(false)
        ->take_all();
    addChoice(app, "--log-level", options->logThreshold, severities,
              "How bad something must be to be logged on standard error; warning when left out");
    addChoice(app, "--format", options->form, forms,
              "What to write: text for people, which is the default, or json for programs");
    addChoice(app, "--color", options->colour, colourChoices,
              "When to use colours; auto, the default, is on a terminal");
    return options;
}

}  // namespace vx::tool
