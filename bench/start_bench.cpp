// Times whole processes: `vxsettings get` and `gsettings get` of the same setting in trees of the same size,
// without and with a settings file, `vxsettings get` of several settings, and the steps of the command. The
// processes run alternately, so that other load affects all of them equally. Prints the medians in
// microseconds as a JSON object.
//
//   vx_bench_start ROUNDS

#include <algorithm>
#include <bench/live_bundle.hpp>
#include <bench/schema_folder.hpp>
#include <bench/temporary_folder.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <span>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>

namespace bench {

namespace {

/// Where a command finds the user's settings.
struct Home
{
    std::filesystem::path folder;
    const char* backend;  ///< of GSettings
};

void useHome(const Home& home)
{
    setenv("XDG_CONFIG_HOME", home.folder.c_str(), 1);
    setenv("XDG_STATE_HOME", home.folder.c_str(), 1);
    setenv("GSETTINGS_BACKEND", home.backend, 1);
}

struct Command
{
    std::string name;
    std::vector<std::string> arguments;
    const Home& home;
    std::vector<double> microseconds = {};
};

/// Runs a program until it exits and discards its output. Throws std::runtime_error when it fails.
void run(const std::vector<std::string>& arguments)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("cannot run " + arguments.front());
    }
}

double timed(const std::vector<std::string>& arguments)
{
    const auto start = std::chrono::steady_clock::now();
    run(arguments);
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::vector<std::string> getCommand(std::span<const PlainSetting> settings)
{
    std::vector<std::string> arguments = {(vx::tool::executableFile().parent_path() / "vxsettings").string(),
                                          "get"};
    std::ranges::transform(settings, std::back_inserter(arguments), &PlainSetting::path);
    return arguments;
}

/// Lets both commands write a settings file with another value of the setting.
void writeSettingsFiles(const PlainSetting& setting, const Home& home)
{
    useHome(home);
    const std::string value = "long";
    run({getCommand({}).front(), "set", setting.path(), value});
    run({"gsettings", "set", setting.group, setting.name, value});
    for (const char* file : {"verdix/settings.json", "glib-2.0/settings/keyfile"}) {
        if (!std::filesystem::exists(home.folder / file)) {
            throw std::runtime_error("no settings were written to " + (home.folder / file).string());
        }
    }
}

std::vector<Command> commands(std::span<const PlainSetting> settings, const PlainSetting& one,
                              const Home& withoutFile, const Home& withFile)
{
    const std::vector<std::string> get = getCommand({&one, 1});
    const std::vector<std::string> otherGet = {"gsettings", "get", one.group, one.name};
    std::vector<Command> all = {{"vxsettings get", get, withoutFile},
                                {"gsettings get", otherGet, withoutFile},
                                {"vxsettings get, file", get, withFile},
                                {"gsettings get, file", otherGet, withFile},
                                {"vxsettings get 10", getCommand(settings.first(10)), withoutFile},
                                {"vxsettings get 100", getCommand(settings.first(100)), withoutFile},
                                {"process", {"/bin/true"}, withoutFile}};
    const std::string steps = (vx::tool::executableFile().parent_path() / "vx_bench_start_steps").string();
    for (const char* step : {"linking", "framework", "bundle", "tree", "files"}) {
        all.push_back({step, {steps, step, one.path()}, withoutFile});
    }
    return all;
}

void measure(int rounds)
{
    const TemporaryFolder folder;
    const std::vector<PlainSetting> settings = plainSettings(vx::core::loadTree(liveLoader()));
    writeSchemaFolder(settings, folder.path());
    setenv("GSETTINGS_SCHEMA_DIR", folder.path().c_str(), 1);
    const PlainSetting& one =
        *std::ranges::find(settings, "verdix.commandwindow.NumericFormat", &PlainSetting::path);
    const Home withoutFile = {folder.path() / "empty", "memory"};
    const Home withFile = {folder.path() / "home", "keyfile"};
    writeSettingsFiles(one, withFile);
    std::vector<Command> all = commands(settings, one, withoutFile, withFile);
    for (int round = -3; round < rounds; ++round) {
        for (Command& command : all) {
            useHome(command.home);
            const double microseconds = timed(command.arguments);
            if (round >= 0) {
                command.microseconds.push_back(microseconds);
            }
        }
    }
    const char* separator = "{";
    for (Command& command : all) {
        std::printf("%s\"%s\": %.0f", separator, command.name.c_str(), median(command.microseconds));
        separator = ", ";
    }
    std::printf("}\n");
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv)
{
    const int rounds = argc == 2 ? std::atoi(argv[1]) : 0;
    if (rounds < 1) {
        std::fprintf(stderr, "usage: %s ROUNDS\n", argv[0]);
        return 2;
    }
    bench::measure(rounds);
    return 0;
}
