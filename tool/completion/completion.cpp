#include "completion/completion.hpp"

#include <settings_core/path_lookup.hpp>
#include <settings_core/value_format.hpp>

#include <foundation/host.hpp>
#include <foundation/verdixdata/text.hpp>

#include <CLI/App.hpp>

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "arguments.hpp"
#include "value_constraints.hpp"
#include "words.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::toUtf8;

constexpr std::size_t valueWidth = 40;

/// What the words before the last one say.
struct Situation
{
    const CLI::App* verb = nullptr;
    const CLI::Option* pending = nullptr;  ///< an option whose value comes next
    std::vector<std::string_view> operands = {};
    bool optionsAreOver = false;
};

bool takesValue(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0;
}

const CLI::Option* findOption(const CLI::App& app, const CLI::App* verb, std::string_view word)
{
    const std::string name(word.substr(0, word.find('=')));
    const CLI::Option* option = verb == nullptr ? nullptr : verb->get_option_no_throw(name);
    return option == nullptr ? app.get_option_no_throw(name) : option;
}

bool isOption(const Situation& situation, std::string_view word)
{
    return word.starts_with('-') && !situation.optionsAreOver;
}

const CLI::App* findVerb(const CLI::App& app, std::string_view name)
{
    const auto found = app.get_subcommands([&](const CLI::App* verb) { return verb->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

void take(const CLI::App& app, std::string_view word, Situation& situation)
{
    if (situation.pending != nullptr) {
        situation.pending = nullptr;
    } else if (word == "--") {
        situation.optionsAreOver = true;
    } else if (isOption(situation, word)) {
        const CLI::Option* option = findOption(app, situation.verb, word);
        const bool isOpen =
            option != nullptr && takesValue(*option) && word.find('=') == std::string_view::npos;
        situation.pending = isOpen ? option : nullptr;
    } else if (situation.verb == nullptr) {
        situation.verb = findVerb(app, word);
    } else {
        situation.operands.push_back(word);
    }
}

// Candidates by what an option or operand takes

class Completer
{
public:
    Completer(const CLI::App& app, LazySession& session) : app_(app), session_(session) {}

    Completion complete(const Situation& situation, const std::string& word)
    {
        if (situation.pending != nullptr) {
            addValues(*situation.pending, situation, word);
        } else if (isOption(situation, word) && word.find('=') != std::string::npos) {
            addAssigned(situation, word);
        } else if (isOption(situation, word)) {
            addOptions(situation.verb);
        } else if (situation.verb == nullptr) {
            addVerbs();
        } else if (const CLI::Option* operand = nextOperand(situation)) {
            addValues(*operand, situation, word);
        }
        std::erase_if(result_.candidates,
                      [&](const Candidate& candidate) { return !candidate.word.starts_with(word); });
        return std::move(result_);
    }

private:
    using Options = std::vector<const CLI::Option*>;

    void add(std::string word, std::string description = {})
    {
        result_.candidates.push_back({std::move(word), std::move(description)});
    }

    void addVerbs()
    {
        for (const CLI::App* verb : app_.get_subcommands([](const CLI::App*) { return true; })) {
            if (!verb->get_group().empty()) {
                add(verb->get_name(), verb->get_description());
            }
        }
    }

    /// Those of the verb, then those of every verb that it has not got an own one for.
    void addOptions(const CLI::App* verb)
    {
        for (const CLI::App* app : {verb, &app_}) {
            for (const CLI::Option* option : app == nullptr ? Options() : app->get_options()) {
                for (const std::string& name : option->get_lnames()) {
                    const std::string word = "--" + name;
                    if (findOption(app_, verb, word) == option) {
                        add(word, option->get_description());
                    }
                }
            }
        }
    }

    /// The value of an option in one word with it.
    void addAssigned(const Situation& situation, const std::string& word)
    {
        const std::size_t behind = word.find('=') + 1;
        if (const CLI::Option* option = findOption(app_, situation.verb, word)) {
            addValues(*option, situation, word.substr(behind));
        }
        for (Candidate& candidate : result_.candidates) {
            candidate.word.insert(0, word, 0, behind);
        }
    }

    static const CLI::Option* nextOperand(const Situation& situation)
    {
        std::size_t index = 0;
        for (const CLI::Option* option : situation.verb->get_options()) {
            if (!option->get_positional()) {
                continue;
            }
            if (index == situation.operands.size() || option->get_items_expected_max() > 1) {
                return option;
            }
            ++index;
        }
        return nullptr;
    }

    void addValues(const CLI::Option& option, const Situation& situation, const std::string& word)
    {
        const std::string type = option.get_positional() ? option.get_name() : option.get_type_name();
        for (const std::string& choice : choicesOf(option)) {
            add(choice);
        }
        if (type == "FILE" || type == "OLD" || type == "NEW") {
            result_.takesFile = true;
        } else if (type == "PATH" || type == "PATTERN") {
            addPaths(situation, word);
        } else if (type == "VALUE") {
            addSettingValues(situation.operands.front());
        } else if (type == "RELEASE") {
            addReleases();
        } else if (type == "VALIDATOR") {
            addCheckNames();
        } else if (type == "NAME=VALUE") {
            addFeatures();
        }
    }

    /// One level of the tree at a time, with or without the root as the word begins.
    void addPaths(const Situation& situation, const std::string& word)
    {
        const core::SettingsTree& tree = session_.get().tree();
        const std::string root = tree.root()->getFullName() + ".";
        const std::string parent = word.substr(0, word.rfind('.') + 1);
        const std::string full = word.starts_with(root) ? parent : root + parent;
        const Node* group = full == root ? tree.root().get() : tree.find(full.substr(0, full.size() - 1));
        if (group == nullptr) {
            return;
        }
        if (parent.empty()) {
            add(root, "everything");
        }
        for (const Node& child : group->children()) {
            addNode(situation, child, parent + std::string(child.name()));
        }
    }

    /// A group by itself only where it is something to ask for.
    void addNode(const Situation& situation, const Node& node, const std::string& path)
    {
        if (node.kind() != NodeKind::group) {
            add(path, core::formatValueOnOneLine(node.properties().factoryValue, valueWidth));
            return;
        }
        const std::string_view verb = situation.verb->get_name();
        if (verb != "get" && verb != "set") {
            add(path, "group");
        }
        add(path + ".", "group");
    }

    void addSettingValues(std::string_view path)
    {
        const core::SettingsTree& tree = session_.get().tree();
        const Node* setting = tree.find(core::fullPath(tree, path));
        if (setting == nullptr || setting->kind() != NodeKind::setting) {
            return;
        }
        const ValueConstraints constraints = constraintsOf(*setting);
        if (constraints.form.elementClass == foundation::verdixdata::ArrayType::LOGICAL) {
            add("true");
            add("false");
        }
        if (constraints.texts) {
            for (const std::u16string& text : *constraints.texts) {
                add(toUtf8(text));
            }
        }
        for (const std::u16string& text : constraints.wordsForNumbers) {
            add(toUtf8(text));
        }
    }

    void addReleases()
    {
        for (const auto& [index, set] : session_.get().releaseChanges()) {
            add(set.release);
        }
    }

    void addCheckNames()
    {
        std::set<std::string> names;
        for (const Node* node : session_.get().tree().nodes()) {
            std::ranges::move(checkNames(*node), std::inserter(names, names.end()));
        }
        for (const std::string& name : names) {
            add(name);
        }
    }

    /// Switches that the tree asked for.
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
};

}  // namespace

Completion complete(const CLI::App& app, std::span<const std::string> words, LazySession& session)
{
    Situation situation;
    for (const std::string& word : words.first(words.size() - 1)) {
        take(app, word, situation);
    }
    return Completer(app, session).complete(situation, words.back());
}

}  // namespace vx::tool
