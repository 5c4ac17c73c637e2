#include <settings_core/settings_editor.hpp>

#include <memory>
#include <string>

#include "arguments.hpp"
#include "json_text.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

struct SetOptions
{
    std::string path;
    std::string value;
    bool isJson = false;
};

struct ResetOptions
{
    std::string path;
    bool all = false;
};

ExitCode set(LazySession& lazy, const SetOptions& options, Output& out)
{
    const Session& session = lazy.get();
    const auto releases = session.releaseChanges();
    const std::string file = lazy.layerFiles().personal.string();
    core::SettingsEditor changer(session.tree(), releases, file);
    const core::Node& setting = changer.set(options.path, options.value,
                                            options.isJson ? core::Notation::json : core::Notation::script);
    if (out.isJson()) {
        writeJson({{"path", setting.fullName()}, {"file", file}}, out);
    } else {
        out << setting.fullName() << " is set in " << file << '\n';
    }
    return ExitCode::done;
}

ExitCode reset(LazySession& lazy, const ResetOptions& options, Output& out)
{
    if (options.all == !options.path.empty()) {
        throw Failure(ExitCode::usage, "reset needs either a path or --all; see vxsettings reset --help");
    }
    const Session& session = lazy.get();
    const auto releases = session.releaseChanges();
    const std::string file = lazy.layerFiles().personal.string();
    core::SettingsEditor changer(session.tree(), releases, file);
    const std::size_t count = options.all ? changer.resetAll() : changer.reset(options.path);
    if (out.isJson()) {
        writeJson({{"count", count}, {"file", file}}, out);
    } else {
        out << count << (count == 1 ? " setting" : " settings") << " reset in " << file << '\n';
    }
    return ExitCode::done;
}

}  // namespace

Action addSet(CLI::App& verb)
{
    describe(verb, "Give a setting a value in your own settings file",
             "Examples:\n  vxsettings set commandwindow.WrapLines true\n"
             "  vxsettings set colors.KeywordColor '[14 0 255]'");
    auto options = std::make_shared<SetOptions>();
    addOperand(verb, "PATH", options->path, Need::required, "Setting or alias");
    addOperand(verb, "VALUE", options->value, Need::required,
               "true, 12, [14 0 255], a text with or without quotes, or {\"a\",\"b\"}; put -- in front of a "
               "text that begins with -");
    addFlag(verb, "--json", options->isJson, "VALUE is JSON: 12, [14, 0, 255], \"text\", [\"a\", \"b\"]");
    return [options](LazySession& session, Output& out) { return set(session, *options, out); };
}

Action addReset(CLI::App& verb)
{
    describe(verb, "Take values out of your own settings file",
             "Examples:\n  vxsettings reset commandwindow.WrapLines\n  vxsettings reset colors");
    auto options = std::make_shared<ResetOptions>();
    addOperand(verb, "PATH", options->path, Need::optional, "Setting, or group with everything in it");
    addFlag(verb, "--all", options->all, "Every setting");
    return [options](LazySession& session, Output& out) { return reset(session, *options, out); };
}

}  // namespace vx::tool
