#include "completion/completion.hpp"

#include <review/words.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/host.hpp>
#include <foundation/verdixdata/text.hpp>

#include <CLI/App.hpp>

#include <algorithm>
#include <string_view>

#include "catalog/catalog.hpp"
#include "cli/arguments.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::toUtf8;

constexpr std::size_t valueWidth = 40;

/// The state of the command line before its last argument.
struct CommandLine
{
    const CLI::App* command = nullptr;
    const CLI::Option* pending = nullptr;  ///< an option whose value comes next
    std::vector<std::string_view> positionals = {};
    bool isAfterDashes = false;  ///< the argument "--" ends the options
};

bool takesValue(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0;
}

const CLI::Option* findOption(const CLI::App& app, const CLI::App* command, std::string_view argument)
{
    const std::string name(argument.substr(0, argument.find('=')));
    const CLI::Option* option = command == nullptr ? nullptr : command->get_option_no_throw(name);
    return option == nullptr ? app.get_option_no_throw(name) : option;
}

bool isOption(const CommandLine& line, std::string_view argument)
{
    return argument.starts_with('-') && !line.isAfterDashes;
}

void parseArgument(const CLI::App& app, std::string_view argument, CommandLine& line)
{
    if (line.pending != nullptr) {
        line.pending = nullptr;
    } else if (argument == "--") {
        line.isAfterDashes = true;
    } else if (isOption(line, argument)) {
        const CLI::Option* option = findOption(app, line.command, argument);
        const bool isOpen =
            option != nullptr && takesValue(*option) && argument.find('=') == std::string_view::npos;
        line.pending = isOpen ? option : nullptr;
    } else if (line.command == nullptr) {
        line.command = findCommand(app, argument);
    } else {
        line.positionals.push_back(argument);
    }
}

// Candidates for the value of an option or positional argument

class Completer
{
public:
    Completer(const CLI::App& app, LazySession& session) : app_(app), session_(session) {}

    Completion complete(const CommandLine& line, const std::string& argument)
    {
        if (line.pending != nullptr) {
            addValues(*line.pending, line, argument);
        } else if (isOption(line, argument) && argument.find('=') != std::string::npos) {
            addAssigned(line, argument);
        } else if (isOption(line, argument)) {
            addOptions(line.command);
        } else if (line.command == nullptr) {
            addCommands();
        } else if (const CLI::Option* positional = nextPositional(line)) {
            addValues(*positional, line, argument);
        }
        std::erase_if(result_.candidates,
                      [&](const Candidate& candidate) { return !candidate.argument.starts_with(argument); });
        if (result_.candidates.empty() && takesPath_) {
            addInnerPaths(line, argument);
        }
        return std::move(result_);
    }

private:
    using Options = std::vector<const CLI::Option*>;

    void add(std::string argument, std::string description = {})
    {
        result_.candidates.push_back({std::move(argument), std::move(description)});
    }

    void addCommands()
    {
        for (const CLI::App* command : app_.get_subcommands([](const CLI::App*) { return true; })) {
            if (!command->get_group().empty()) {
                add(command->get_name(), command->get_description());
            }
        }
    }

    /// Adds the options of the command, then the global options that these do not hide.
    void addOptions(const CLI::App* command)
    {
        for (const CLI::App* app : {command, &app_}) {
            for (const CLI::Option* option : app == nullptr ? Options() : app->get_options()) {
                for (const std::string& name : option->get_lnames()) {
                    const std::string dashed = "--" + name;
                    if (findOption(app_, command, dashed) == option) {
                        add(dashed, option->get_description());
                    }
                }
            }
        }
    }

    /// Adds the candidates for --option=value.
    void addAssigned(const CommandLine& line, const std::string& argument)
    {
        const std::size_t valueStart = argument.find('=') + 1;
        if (const CLI::Option* option = findOption(app_, line.command, argument)) {
            addValues(*option, line, argument.substr(valueStart));
        }
        for (Candidate& candidate : result_.candidates) {
            candidate.argument.insert(0, argument, 0, valueStart);
        }
    }

    static const CLI::Option* nextPositional(const CommandLine& line)
    {
        std::size_t index = 0;
        for (const CLI::Option* option : line.command->get_options()) {
            if (!option->get_positional()) {
                continue;
            }
            if (index == line.positionals.size() || option->get_items_expected_max() > 1) {
                return option;
            }
            ++index;
        }
        return nullptr;
    }

    void addValues(const CLI::Option& option, const CommandLine& line, const std::string& argument)
    {
        const std::string type = option.get_positional() ? option.get_name() : option.get_type_name();
        for (const std::string& choice : choicesOf(option)) {
            add(choice);
        }
        if (type == "FILE" || type == "OLD" || type == "NEW") {
            result_.takesFile = true;
        } else if (type == "PATH" || type == "PATTERN") {
            takesPath_ = true;
            addPaths(line, argument);
        } else if (type == "COMMAND") {
            addCommands();
        } else if (type == "VALUE") {
            addSettingValues(line.positionals.front());
        } else if (type == "RELEASE") {
            addReleases();
        } else if (type == "VALIDATOR") {
            addConstraintNames();
        } else if (type == "NAME=VALUE") {
            addFeatures();
        }
    }

    /// Adds the paths one level below the typed path, with the root if it is typed.
    void addPaths(const CommandLine& line, const std::string& argument)
    {
        const core::SettingsTree& tree = session_.get().tree();
        const std::string root = tree.root()->getFullName() + ".";
        const std::string parent = argument.substr(0, argument.rfind('.') + 1);
        const std::string full = argument.starts_with(root) ? parent : root + parent;
        const Node* group = full == root ? tree.root().get() : tree.find(full.substr(0, full.size() - 1));
        if (group == nullptr) {
            return;
        }
        if (parent.empty()) {
            add(root, "root group");
        }
        Catalog catalog(tree);
        for (const Node& child : group->children()) {
            if (std::string path = parent + std::string(child.name()); path.starts_with(argument)) {
                addNode(line, child, path, catalog);
            }
        }
    }

    /// Adds the paths whose last name begins with what is typed, or whose last names do, in any letter case.
    void addInnerPaths(const CommandLine& line, const std::string& argument)
    {
        const core::SettingsTree& tree = session_.get().tree();
        const std::string typed = "." + review::lowerCase(argument);
        Catalog catalog(tree);
        for (const Node* node : tree.nodes()) {
            const std::string path = node->getFullName();
            const std::size_t found = review::lowerCase(path).rfind(typed);
            if (found != std::string::npos && path.find('.', found + typed.size()) == std::string::npos) {
                addNode(line, *node, path, catalog);
            }
        }
    }

    /// Adds a setting, or a group: with a dot to continue, and without one if the command takes groups.
    void addNode(const CommandLine& line, const Node& node, const std::string& path, Catalog& catalog)
    {
        const bool isGroup = node.kind() == NodeKind::group;
        const std::string value =
            isGroup ? "group" : core::formatValueOnOneLine(node.properties().factoryValue, valueWidth);
        const std::string& sentence = catalog.entryOf(node).sentence;
        const std::string hint = catalog.ownTitleOf(node) + (value.empty() ? "" : " (" + value + ")") +
                                 (sentence.empty() ? "" : ": " + sentence);
        const std::string_view command = line.command->get_name();
        if (!isGroup || (command != "get" && command != "set")) {
            add(path, hint);
        }
        if (isGroup) {
            add(path + ".", hint);
        }
    }

    void addSettingValues(std::string_view path)
    {
        const core::SettingsTree& tree = session_.get().tree();
        const Node* setting = tree.find(core::fullPath(tree, path));
        if (setting == nullptr || setting->kind() != NodeKind::setting) {
            return;
        }
        const core::Constraint constraint = core::constraintOf(setting->properties());
        if (constraint.elementClass == foundation::verdixdata::ArrayType::LOGICAL) {
            add("true");
            add("false");
        }
        Catalog catalog(tree);
        const review::CatalogEntry& entry = catalog.entryOf(*setting);
        const std::vector<std::u16string_view> none;
        for (const auto& strings : {constraint.allowedStrings.value_or(none), constraint.colourNames}) {
            for (const std::u16string_view string : strings) {
                const std::string value = toUtf8(string);
                add(value, std::string(entry.phraseOf(value)));
            }
        }
    }

    void addReleases()
    {
        for (const auto& [index, set] : session_.get().releaseChanges()) {
            add(set.release);
        }
    }

    void addConstraintNames()
    {
        for (const std::string& name : constraintNames(session_.get().tree())) {
            add(name);
        }
    }

    /// Adds the feature switches that the tree has queried.
    void addFeatures()
    {
        static_cast<void>(session_.get());
        for (const auto& [name, value] : foundation::host::features()) {
            add(name + "=on");
            add(name + "=off");
        }
    }

    const CLI::App& app_;
    LazySession& session_;
    Completion result_;
    bool takesPath_ = false;
};

}  // namespace

Completion complete(const CLI::App& app, std::span<const std::string> arguments, LazySession& session)
{
    CommandLine line;
    for (const std::string& argument : arguments.first(arguments.size() - 1)) {
        parseArgument(app, argument, line);
    }
    return Completer(app, session).complete(line, arguments.back());
}

}  // namespace vx::tool
