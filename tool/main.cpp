#include <settings_core/suggestions.hpp>

#include <foundation/host.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "bundle_file.hpp"
#include "failure.hpp"
#include "global_options.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

constexpr const char* description =
    "Shows the factory settings of the Verdix environment; changes, checks and migrates settings files.";

constexpr const char* examples = "Examples:\n"
                                 "  vxsettings tree commandwindow\n"
                                 "  vxsettings list '*.suggestions.*'\n"
                                 "  vxsettings get connector.InterfacesBlocklist --bundle other.so\n";

/// The end of the command's own help.
std::string footer()
{
    std::string text = examples;
    text += "Exit codes:\n";
    for (const auto& [code, meaning] : exitMeanings) {
        text.append("  ").append(std::to_string(static_cast<int>(code)));
        text.append("  ").append(meaning).append("\n");
    }
    return text + "Each verb tells more with --help. The options above go with every verb.";
}

struct VerbEntry
{
    std::string_view name;
    Action (*add)(CLI::App& verb);
    bool looksAtAll = false;  ///< its action looks at the other verbs
};

constexpr VerbEntry entries[] = {{"summary", addSummary},
                                 {"tree", addTree},
                                 {"list", addList},
                                 {"search", addSearch},
                                 {"describe", addDescribe},
                                 {"get", addGet},
                                 {"set", addSet},
                                 {"reset", addReset},
                                 {"check", addCheck},
                                 {"migrate", addMigrate},
                                 {"changes", addChanges},
                                 {"diff", addDiff},
                                 {"history", addHistory},
                                 {"export", addExport},
                                 {"lint", addLint},
                                 {"doctor", addDoctor},
                                 {"completion", addCompletion},
                                 {"complete", addComplete, true},
                                 {"manual", addManual, true}};

struct Verb
{
    CLI::App* parser;
    Action action;
};

Verb addVerb(CLI::App& app, const VerbEntry& entry)
{
    CLI::App* parser = app.add_subcommand(std::string(entry.name));
    return {parser, entry.add(*parser)};
}

/// The verb that the command line begins with, or else all of them: to make them takes longer than to do
/// most.
std::vector<Verb> addVerbs(CLI::App& app, std::string_view firstWord)
{
    const auto* named = std::ranges::find(entries, firstWord, &VerbEntry::name);
    if (named != std::end(entries) && !named->looksAtAll) {
        return {addVerb(app, *named)};
    }
    std::vector<Verb> verbs;
    std::ranges::transform(entries, std::back_inserter(verbs),
                           [&app](const VerbEntry& entry) { return addVerb(app, entry); });
    return verbs;
}

/// The first verb is done when none is named.
const Verb& chosenVerb(const std::vector<Verb>& verbs)
{
    for (const Verb& verb : verbs) {
        if (verb.parser->parsed()) {
            return verb;
        }
    }
    return verbs.front();
}

ExitCode execute(const GlobalOptions& options, const Verb& verb)
{
    foundation::host::setLogThreshold(options.logThreshold);
    for (const auto& [name, value] : options.features) {
        foundation::host::setFeature(name, value);
    }
    Output out(STDOUT_FILENO, "standard output", options.colour, options.form);
    const auto bundleFile =
        options.bundleFile.empty() ? defaultBundleFile() : std::filesystem::path(options.bundleFile);
    LazySession session(std::filesystem::absolute(bundleFile).lexically_normal(), options.files);
    const ExitCode code = verb.action(session, out);
    out.flush();
    session.leaveTree();
    return code;
}

/// What is wrong with the command line. A word that is no verb gets the verbs that are near.
std::string usageError(const CLI::App& app, const CLI::ParseError& error)
{
    const auto extras = app.remaining();
    if (extras.empty() || extras.front().starts_with('-') || !app.get_subcommands().empty()) {
        return firstLine(error.what()) + "; see vxsettings --help";
    }
    std::vector<std::string_view> names;
    for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(verb->get_name());
    }
    const auto near = core::suggestNames(extras.front(), names);
    return "no such verb: " + extras.front() + "; " +
           (near.empty() ? "see vxsettings --help" : core::didYouMean(near));
}

ExitCode print(const std::string& text)
{
    Output out(STDOUT_FILENO, "standard output", ColourChoice::never);
    out << text;
    out.flush();
    return ExitCode::done;
}

ExitCode run(int argc, const char* const* argv)
{
    CLI::App app(description, "vxsettings");
    app.set_version_flag("--version", "vxsettings " VX_TOOL_VERSION, "Print the version and end");
    app.fallthrough();
    const auto options = addGlobalOptions(app);
    const std::vector<Verb> verbs = addVerbs(app, argc > 1 ? argv[1] : "");
    app.footer(footer);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForVersion& version) {
        return print(std::string(version.what()) + "\n");
    } catch (const CLI::Success&) {
        const bool isOfVerb = !app.get_subcommands().empty();
        return print(app.help() + (isOfVerb ? "Options that go with every verb: vxsettings --help\n" : ""));
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitCode::usage, usageError(app, error));
    }
    return execute(*options, chosenVerb(verbs));
}

ExitCode report(ExitCode code, const char* line)
{
    std::fprintf(stderr, "vxsettings: %s\n", line);
    return code;
}

/// Files opened later must not take the place of a closed standard descriptor: what is written there would
/// end up in them. The stand-in refuses to be written.
void occupyStandardDescriptors()
{
    while (true) {
        const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (descriptor > STDERR_FILENO) {
            ::close(descriptor);
        }
        if (descriptor < 0 || descriptor > STDERR_FILENO) {
            return;
        }
    }
}

ExitCode guardedRun(int argc, const char* const* argv)
{
    try {
        return run(argc, argv);
    } catch (const Failure& failure) {
        return report(failure.code(), failure.what());
    } catch (const std::bad_alloc&) {
        return report(ExitCode::failed,
                      "out of memory: end other programs, or raise the memory limit of this one");
    } catch (const std::exception& error) {
        return report(ExitCode::failed, error.what());
    }
}

}  // namespace

}  // namespace vx::tool

int main(int argc, char** argv)
{
    vx::tool::occupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is a failed write, reported as such
    return static_cast<int>(vx::tool::guardedRun(argc, argv));
}
