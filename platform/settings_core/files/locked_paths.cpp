#include <settings_core/files/locked_paths.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/releases/release_history.hpp>

#include <foundation/verdixdata/text.hpp>

#include <utility>

namespace vx::core {

LockedPaths::LockedPaths(const SettingsFile& file)
{
    for (const JsonValue& path : file.locked()) {
        add(foundation::verdixdata::toUtf8(decodedString(path)));
    }
}

bool LockedPaths::covers(std::string_view path) const
{
    while (!has(path)) {
        const std::size_t dot = path.rfind('.');
        if (dot == std::string_view::npos) {
            return false;
        }
        path = path.substr(0, dot);
    }
    return true;
}

void LockedPaths::rename(std::string_view path, const std::string& target)
{
    auto entry = byPath_.extract(byPath_.find(path));
    paths_[entry.mapped()] = target;
    entry.key() = target;
    byPath_.insert(std::move(entry));
}

void LockedPaths::add(const std::string& path)
{
    if (byPath_.try_emplace(path, paths_.size()).second) {
        paths_.push_back(path);
    }
}

void LockedPaths::remove(std::string_view path)
{
    const auto entry = byPath_.find(path);
    paths_[entry->second].clear();
    byPath_.erase(entry);
}

std::vector<std::string> LockedPaths::pathsAtOrUnder(std::string_view path) const
{
    std::vector<std::string> paths;
    for (auto entry = byPath_.lower_bound(path); entry != byPath_.end() && entry->first.starts_with(path);
         ++entry)
    {
        if (isAtOrUnder(entry->first, path)) {
            paths.push_back(entry->first);
        }
    }
    return paths;
}

std::string LockedPaths::text(const SettingsFile& file) const
{
    const std::vector<JsonValue>& old = file.locked();
    const auto between = [&file](std::size_t begin, std::size_t end) {
        return file.text().substr(begin, end - begin);
    };
    const std::string separator = old.size() > 1 ? between(old[0].end(), old[1].offset) : ", ";
    const JsonValue& array = *file.lockedValue();
    std::string text = old.empty() ? "[" : between(array.offset, old.front().offset);
    bool isFirst = true;
    for (const std::string& path : paths_) {
        if (!path.empty()) {
            text += (isFirst ? "" : separator) + jsonLiteral(foundation::verdixdata::toUtf16(path));
            isFirst = false;
        }
    }
    return text + (old.empty() ? "]" : between(old.back().end(), array.end()));
}

}  // namespace vx::core
