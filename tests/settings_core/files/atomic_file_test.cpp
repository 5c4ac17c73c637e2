#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_file.hpp>

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/file.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <tests/support/files.hpp>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using vx::core::LockedFile;
using vx::core::readFile;

struct AtomicFileTest : testing::Test
{
    void write(const std::string& content) const { LockedFile(file).replace(content); }

    template <class Action>
    static void expectRefusal(const std::string& words, Action action)
    {
        EXPECT_THAT(action, testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr(words)));
    }

    /// The names in the folder.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(file.parent_path())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    tests::TestFolder folder;
    fs::path file = folder / "settings.json";
};

TEST_F(AtomicFileTest, KeepsModeAndLinksAndLeavesEqualFilesAlone)
{
    write("old");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    const fs::path link = folder / "link.json";
    fs::create_symlink("settings.json", link);
    struct stat before = {};
    ::stat(file.c_str(), &before);
    LockedFile(link).replace("old");
    struct stat after = {};
    ::stat(file.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);

    LockedFile(link).replace("new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readFile(file), "new");
    ::stat(file.c_str(), &after);
    EXPECT_EQ(after.st_mode, before.st_mode);

    EXPECT_TRUE(LockedFile(file).keepCopy("copy"));
    EXPECT_FALSE(LockedFile(file).keepCopy("copy"));
    EXPECT_EQ(readFile(folder / "copy"), "new");
}

TEST_F(AtomicFileTest, FailedWriteLeavesTheOldFileAndNothingElse)
{
    write("old");
    // A full disk, as far as the process can tell.
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{2, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    expectRefusal("cannot write " + file.string(), [&] { write("a new content that does not fit"); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, ignored);
    EXPECT_EQ(readFile(file), "old");
    EXPECT_THAT(names(), testing::ElementsAre("settings.json"));
}

/// Starts the writer in a process that waits to be traced.
template <class Writer>
pid_t startTraced(Writer writer)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        writer();
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
    return child;
}

/// Continues to the next entry into or return from a system call. False when the process ended before.
bool continueToStop(pid_t child)
{
    int status = 0;
    ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    ::waitpid(child, &status, 0);
    return !WIFEXITED(status);
}

/// Runs the writer up to its n-th stop, and kills it there. False when it ended before.
template <class Writer>
bool killAtStop(int n, Writer writer)
{
    const pid_t child = startTraced(writer);
    for (int stop = 0; stop < n; ++stop) {
        if (!continueToStop(child)) {
            return false;
        }
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    return true;
}

/// The system call that a stopped process is entering; its number is 0 if there is none.
auto enteredCall(pid_t child)
{
    __ptrace_syscall_info info = {};
    ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
    return info.op == PTRACE_SYSCALL_INFO_ENTRY ? info.entry : decltype(info.entry){};
}

/// The flushes and renames that the writer asks of the system, in order.
template <class Writer>
std::vector<std::string> flushesAndRenames(Writer writer)
{
    std::vector<std::string> calls;
    const pid_t child = startTraced(writer);
    while (continueToStop(child)) {
        const auto call = enteredCall(child);
        if (call.nr == SYS_fsync) {
            const fs::path file = "/proc/" + std::to_string(child) + "/fd/" + std::to_string(call.args[0]);
            calls.emplace_back(fs::is_directory(file) ? "flush folder" : "flush file");
        } else if (call.nr == SYS_rename || call.nr == SYS_renameat2) {
            calls.emplace_back("rename");
        }
    }
    return calls;
}

TEST_F(AtomicFileTest, TheNewFileIsOnDiskBeforeItsNameIs)
{
    EXPECT_THAT(flushesAndRenames([&] { write("new"); }),
                testing::ElementsAre("flush file", "rename", "flush folder"));
}

TEST_F(AtomicFileTest, WriterKilledAtAnySystemCallLeavesTheOldOrTheNewFile)
{
    const std::string before(20000, 'o');
    const std::string after(30000, 'n');
    write(before);
    int kills = 0;
    bool newWasSeen = false;
    while (killAtStop(kills, [&] { write(after); })) {
        ++kills;
        const auto content = readFile(file);
        ASSERT_TRUE(content == before || content == after) << "killed at stop " << kills;
        newWasSeen = newWasSeen || content == after;
        write(before);  // the next writer, amid whatever the killed one left
        ASSERT_EQ(readFile(file), before);
    }
    EXPECT_EQ(readFile(file), after);
    EXPECT_THAT(names(), testing::ElementsAre("settings.json"));
    EXPECT_TRUE(newWasSeen);
    EXPECT_GT(kills, 30) << "open, lock, read, write, flush, rename, flush: two stops each";
}

TEST_F(AtomicFileTest, WhatTheFileSystemRefusesIsNamed)
{
    const fs::path replacement = folder / ".settings.json.new";
    fs::create_symlink("loop", folder / "loop");
    write("old");
    EXPECT_EQ(readFile(file / "below"), std::nullopt) << "no folder, no file";
    expectRefusal("cannot read", [&] { static_cast<void>(readFile(folder / "loop")); });
    {
        LockedFile locked(file);
        expectRefusal("cannot write", [&] { static_cast<void>(locked.keepCopy("no/such/folder")); });
        fs::create_directory(replacement);
        expectRefusal("cannot write " + replacement.string(), [&] { locked.replace("new"); });
        EXPECT_EQ(readFile(file), "old");
        fs::remove(replacement);
        fs::remove(file);
        fs::create_directory(file);
        expectRefusal("cannot write " + file.string() + ": Is a directory", [&] { locked.replace("new"); });
        EXPECT_FALSE(fs::exists(replacement));
    }
}

TEST_F(AtomicFileTest, OnlyRegularFilesOfALimitedSizeAreRead)
{
    ::mkfifo((folder / "fifo").c_str(), 0600);
    tests::writeFile(folder / "large", "");
    fs::resize_file(folder / "large", std::uintmax_t{1} << 40U);  // without blocks on the disk
    const std::pair<fs::path, const char*> cases[] = {
        {folder / "fifo", ": it is a FIFO"},
        {folder / "", ": it is a folder"},
        {"/dev/zero", ": it is a device"},
        {folder / "large", ": it is larger than the maximum of 16"}};
    for (const auto& [input, words] : cases) {
        expectRefusal("cannot read " + input.string() + words,
                      [&path = input] { static_cast<void>(readFile(path)); });
        expectRefusal(words, [&path = input] { const LockedFile locked(path); });
    }
    EXPECT_FALSE(fs::exists("/dev/.zero.lock"));
}

TEST_F(AtomicFileTest, TheLockIsAFileOfItsOwnAndIsNotWaitedForForever)
{
    const fs::path lock = folder / ".settings.json.lock";
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"is a symbolic link", [&] { fs::create_symlink(folder / "elsewhere", lock); }},
        {"is not a regular file", [&] { ::mkfifo(lock.c_str(), 0600); }},
        {"is not a regular file", [&] { fs::create_directory(lock); }}};
    for (const auto& [words, create] : cases) {
        create();
        expectRefusal(lock.string() + " " + words, [&] { write("new"); });
        fs::remove(lock);
        EXPECT_THAT(names(), testing::IsEmpty());
    }
    const LockedFile held(file);
    expectRefusal("cannot write " + file.string() + ": waited 0.02 s for process " +
                      std::to_string(::getpid()),
                  [&] { const LockedFile waiting(file, std::chrono::milliseconds(20)); });
}

TEST_F(AtomicFileTest, ALockFileThatWasRemovedLocksNothing)
{
    const fs::path lock = folder / ".settings.json.lock";
    const pid_t child = startTraced([&] { write("new"); });
    while (enteredCall(child).nr != SYS_flock) {
        ASSERT_TRUE(continueToStop(child));
    }
    fs::remove(lock);  // the child has opened it
    const int held = ::open(lock.c_str(), O_RDWR | O_CREAT, 0600);
    EXPECT_EQ(::flock(held, LOCK_EX), 0);
    ::ptrace(PTRACE_DETACH, child, nullptr, nullptr);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(fs::exists(file));
    ::close(held);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(readFile(file), "new");
}

TEST_F(AtomicFileTest, FilesAreForTheUserAndPermissionsCount)
{
    const fs::path made = folder / "home/verdix/settings.json";
    LockedFile(made).replace("new");
    EXPECT_EQ(fs::status(made).permissions(), fs::perms{0600});
    EXPECT_EQ(fs::status(made.parent_path()).permissions(), fs::perms{0700});
    write("old");
    ::chown((folder / "").parent_path().c_str(), 65534, 65534);
    ::chown(file.c_str(), 65534, 65534);
    const bool isRoot = ::seteuid(65534) == 0;  // whom permissions do not hinder
    fs::permissions(file, fs::perms::owner_read);
    expectRefusal("cannot write " + file.string() + ": Permission denied", [&] { write("new"); });
    fs::permissions(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    expectRefusal("cannot write in " + file.parent_path().string() + ": Permission denied",
                  [&] { write("new"); });
    fs::permissions(file.parent_path(), fs::perms::owner_all);
    EXPECT_EQ(readFile(file), "old");
    if (isRoot) {
        static_cast<void>(::seteuid(0));
        fs::create_symlink("settings.json", folder / "link.json");
        ::lchown((folder / "link.json").c_str(), 65534, 65534);
        expectRefusal("a symbolic link of another user",
                      [&] { LockedFile(folder / "link.json").replace("new"); });
    }
}

TEST_F(AtomicFileTest, ConcurrentWritersLoseNothing)
{
    constexpr int writers = 4;
    constexpr int rounds = 60;
    write("{\"settings\": {}}");
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        children.push_back(::fork());
        if (children.back() != 0) {
            continue;
        }
        for (int round = 0; round < rounds; ++round) {
            LockedFile locked(file);
            const vx::core::SettingsFile settings(*locked.content());
            vx::core::SettingsFileEdit edit(settings);
            edit.set("v.w" + std::to_string(writer) + "." + std::to_string(round), "1");
            locked.replace(edit.text());
        }
        ::_exit(0);
    }
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(vx::core::SettingsFile(*readFile(file)).settings().size(), std::size_t{writers} * rounds);
}

}  // namespace
