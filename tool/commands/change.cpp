#include <settings_core/files/settings_editor.hpp>

#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"

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
    bool resetsAll = false;
};

ExitCode set(LazySession& lazy, const SetOptions& options, Output& out)
{
    const Session& session = lazy.get();
    const std::string file = lazy.layerFiles().personal.string();
    core::SettingsEditor changer(session.tree(), session.releaseChanges(), file, session.publishedRelease());
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
    if (options.resetsAll == !options.path.empty()) {
        throw CommandError(ExitCode::usage,
                           "reset needs either a path or --all; see vxsettings reset --help");
    }
    const Session& session = lazy.get();
    const std::string file = lazy.layerFiles().personal.string();
    core::SettingsEditor changer(session.tree(), session.releaseChanges(), file, session.publishedRelease());
    const std::size_t count = options.resetsAll ? changer.resetAll() : changer.reset(options.path);
    if (out.isJson()) {
        writeJson({{"count", count}, {"file", file}}, out);
    } else {
        out << count << (count == 1 ? " setting" : " settings") << " reset in " << file << '\n';
    }
    return ExitCode::done;
}

}  // namespace

Action addSet(CLI::App& command)
{
    setHelp(command, "Set a value in your personal settings file",
            "Examples:\n  vxsettings set commandwindow.WrapLines true\n"
            "  vxsettings set colors.KeywordColor '[14 0 255]'");
    auto options = std::make_shared<SetOptions>();
    addPositional(command, "PATH", options->path, Need::required, "Setting or alias");
    addPositional(
        command, "VALUE", options->value, Need::requiredOrEmpty,
        "true, 12, [14 0 255], a string with or without quotes, or {\"a\",\"b\"}; precede a value that "
        "begins with - by --");
    addFlag(command, "--json", options->isJson,
            "Read VALUE as JSON: 12, [14, 0, 255], \"text\", [\"a\", \"b\"], or a value as get --format json "
            "prints it");
    return [options](LazySession& session, Output& out) { return set(session, *options, out); };
}

Action addReset(CLI::App& command)
{
    setHelp(command, "Remove values from your personal settings file",
            "Examples:\n  vxsettings reset commandwindow.WrapLines\n  vxsettings reset colors");
    auto options = std::make_shared<ResetOptions>();
    addPositional(command, "PATH", options->path, Need::optional, "Setting, or group with all its settings");
    addFlag(command, "--all", options->resetsAll, "Reset all settings");
    return [options](LazySession& session, Output& out) { return reset(session, *options, out); };
}

}  // namespace vx::tool
