// Whole processes, from their start to their end: `vxsettings get` and `gsettings get` of the same setting in
// trees of the same size, without and with a settings file, `vxsettings get` of several settings, and the
// command's steps. They take turns, so that what disturbs the machine disturbs all of them. Prints one JSON
// object of medians in microseconds.
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

/// Where a command finds settings of the person who runs it.
struct Home
{
    std::filesystem::path folder;
    const char* backend;  ///< of GSettings
};

void enter(const Home& home)
{
    setenv("XDG_CONFIG_HOME", home.folder.c_str(), 1);
    setenv("GSETTINGS_BACKEND", home.backend, 1);
}

struct Command
{
    std::string name;
    std::vector<std::string> words;
    const Home& home;
    std::vector<double> microseconds = {};
};

/// Runs the program to its end, its output thrown away.
void run(const std::vector<std::string>& words)
{
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("cannot run " + words.front());
    }
}

double timed(const std::vector<std::string>& words)
{
    const auto start = std::chrono::steady_clock::now();
    run(words);
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
    std::vector<std::string> words = {(vx::tool::executableFile().parent_path() / "vxsettings").string(),
                                      "get"};
    std::ranges::transform(settings, std::back_inserter(words), &PlainSetting::path);
    return words;
}

/// Has both commands write a settings file that holds another value of the setting.
void writeSettingsFiles(const PlainSetting& setting, const Home& home)
{
    enter(home);
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
            enter(command.home);
            const double microseconds = timed(command.words);
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
