#include <settings_core/files/change_records.hpp>
#include <settings_core/files/input_file.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

/// Two contents, and the lines above them.
constexpr std::size_t maximumRecordSize = 2 * maximumSettingsFileSize + 65536;

/// Stands for the size of a file that does not exist.
constexpr long long noFile = -1;

fs::path folderOf(const fs::path& stateFolder, const fs::path& file)
{
    return stateFolder / "undo" / resolvedPath(file).relative_path();
}

/// Returns the number that a record's file is named by; nothing for other files.
std::optional<unsigned long> recordNumber(const fs::path& record)
{
    const std::string name = record.filename().string();
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? std::optional(number) : std::nullopt;
}

/// Returns the numbers of the records in the folder, newest first.
std::vector<unsigned long> recordNumbers(const fs::path& folder)
{
    std::vector<unsigned long> numbers;
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
        throw std::system_error(error, "cannot read " + folder.string());
    }
    for (const auto& entry : entries) {
        if (const auto number = recordNumber(entry.path()); number && entry.is_regular_file(error)) {
            numbers.push_back(*number);
        }
    }
    std::ranges::sort(numbers, std::greater());
    return numbers;
}

bool isCarriedOut(const fs::path& record, const std::optional<std::string>& content)
{
    const auto change = readChangeRecord(record);
    return change && change->before != content;
}

/// Removes the files of a folder except the newest records: also what killed processes left.
void removeOthers(const fs::path& folder, unsigned long newest)
{
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        const auto number = recordNumber(entry.path());
        if (entry.is_regular_file(ignored) && (!number || *number + keptRecords <= newest)) {
            fs::remove(entry.path(), ignored);
        }
    }
}

std::string currentTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc = {};
    ::gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

long long sizeOf(const std::optional<std::string>& content)
{
    return content ? static_cast<long long>(content->size()) : noFile;
}

std::string formatRecord(const ChangeRecord& change)
{
    std::ostringstream text;
    text << change.time << '\n' << change.command << '\n';
    text << sizeOf(change.before) << ' ' << sizeOf(change.after) << '\n';
    text << change.before.value_or("") << change.after.value_or("");
    return text.str();
}

/// Removes and returns the content of this size at the start of `text`.
std::optional<std::string> takeContent(std::string_view& text, long long size)
{
    if (size == noFile) {
        return std::nullopt;
    }
    std::string content(text.substr(0, static_cast<std::size_t>(size)));
    text.remove_prefix(content.size());
    return content;
}

/// Returns nothing for a damaged record.
std::optional<ChangeRecord> parseRecord(const std::string& text)
{
    ChangeRecord change;
    long long before = 0;
    long long after = 0;
    std::istringstream stream(text);
    std::getline(stream, change.time);
    std::getline(stream, change.command);
    stream >> before >> after;
    if (stream.get() != '\n' || before < noFile || after < noFile) {
        return std::nullopt;
    }
    std::string_view contents = std::string_view(text).substr(static_cast<std::size_t>(stream.tellg()));
    if (std::max(before, 0LL) + std::max(after, 0LL) != static_cast<long long>(contents.size())) {
        return std::nullopt;
    }
    change.before = takeContent(contents, before);
    change.after = takeContent(contents, after);
    return change;
}

}  // namespace

std::vector<fs::path> changeRecords(const fs::path& stateFolder, const fs::path& file,
                                    const std::optional<std::string>& content)
{
    const fs::path folder = folderOf(stateFolder, file);
    std::vector<fs::path> records;
    for (const unsigned long number : recordNumbers(folder)) {
        records.push_back(folder / std::to_string(number));
    }
    if (!records.empty() && !isCarriedOut(records.front(), content)) {
        records.erase(records.begin());
    }
    return records;
}

std::optional<ChangeRecord> readChangeRecord(const fs::path& record)
{
    const std::optional<std::string> text = readFile(record, maximumRecordSize);
    if (!text) {
        return std::nullopt;
    }
    std::optional<ChangeRecord> change = parseRecord(*text);
    if (!change) {
        throw std::runtime_error("the record " + record.string() + " is damaged: remove it");
    }
    return change;
}

ChangeRecorder::ChangeRecorder(fs::path stateFolder, std::string command)
    : stateFolder_(std::move(stateFolder)), command_(std::move(command))
{}

void ChangeRecorder::record(const LockedFile& file, const std::optional<std::string>& content) const
try {
    const fs::path folder = folderOf(stateFolder_, file.path());
    const auto numbers = recordNumbers(folder);
    unsigned long number = numbers.empty() ? 1 : numbers.front() + 1;
    if (const fs::path last = folder / std::to_string(number - 1);
        !numbers.empty() && !isCarriedOut(last, file.content()))
    {
        std::error_code ignored;
        fs::remove(last, ignored);
        --number;
    }
    LockedFile(folder / std::to_string(number))
        .replace(formatRecord({currentTime(), command_, file.content(), content}));
    removeOthers(folder, number);
} catch (const std::system_error& error) {
    throw std::runtime_error(
        "nothing is changed, as the change cannot be recorded for undo: " + std::string(error.what()) +
        "; make " + stateFolder_.string() + " a writable folder, or set XDG_STATE_HOME to one");
}

void ChangeRecorder::replace(LockedFile& file, const std::optional<std::string>& content) const
{
    if (file.content() == content) {
        return;
    }
    record(file, content);
    if (content) {
        file.replace(*content);
    } else {
        file.remove();
    }
}

}  // namespace vx::core
