#include <CLI/CLI.hpp>

#include <fnmatch.h>
#include <memory>
#include <string>

#include "verb.hpp"

namespace vx::tool {

namespace {

bool matches(const std::string& pattern, const char* path)
{
    return ::fnmatch(pattern.c_str(), path, 0) == 0;
}

ExitCode list(const Session& session, const std::string& pattern, Output& out)
{
    const std::size_t rootLength = session.tree().root()->fullName().size() + 1;
    bool any = false;
    for (const core::Node* node : session.tree().nodes()) {
        const char* path = node->fullName().c_str();
        if (matches(pattern, path) || matches(pattern, path + rootLength)) {
            out << node->fullName() << '\n';
            any = true;
        }
    }
    if (!any) {
        throw Failure(ExitCode::failed,
                      "no path matches " + pattern + "; * stands for any text, also for dots");
    }
    return ExitCode::done;
}

}  // namespace

Verb addList(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("list", "Paths, one a line, in the order of the tree");
    auto pattern = std::make_shared<std::string>("*");
    parser->add_option("PATTERN", *pattern,
                       "Glob over full paths, with or without the root, such as '*.suggestions.*'");
    parser->footer("Example:\n  vxsettings list '*.suggestions.*'");
    return {parser,
            [pattern](LazySession& session, Output& out) { return list(session.get(), *pattern, out); }};
}

}  // namespace vx::tool
