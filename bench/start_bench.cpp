// Whole processes, from their start to their end: `vxsettings get` and `gsettings get` of the same setting in
// trees of the same size, and the command's steps. They take turns, so that what disturbs the machine
// disturbs all of them. Prints one JSON object of medians in microseconds.
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
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>

namespace bench {

namespace {

struct Command
{
    std::string name;
    std::vector<std::string> words;
    std::vector<double> microseconds;
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

std::vector<Command> commands()
{
    const std::string folder = vx::tool::executableFile().parent_path().string();
    const std::string path = "verdix.commandwindow.NumericFormat";
    const auto dot = path.rfind('.');
    std::vector<Command> all = {
        {"vxsettings get", {folder + "/vxsettings", "get", path}, {}},
        {"gsettings get", {"gsettings", "get", path.substr(0, dot), path.substr(dot + 1)}, {}},
        {"process", {"/bin/true"}, {}}};
    for (const char* step : {"linking", "framework", "bundle", "tree", "files"}) {
        all.push_back({step, {folder + "/vx_bench_start_steps", step, path}, {}});
    }
    return all;
}

void measure(int rounds)
{
    const TemporaryFolder folder;
    writeSchemaFolder(plainSettings(vx::core::loadTree(liveLoader())), folder.path());
    setenv("GSETTINGS_SCHEMA_DIR", folder.path().c_str(), 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);  // no settings of whoever runs this
    std::vector<Command> all = commands();
    for (int round = -3; round < rounds; ++round) {
        for (Command& command : all) {
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
