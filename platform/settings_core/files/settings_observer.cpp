#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_observer.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/path_lookup.hpp>

#include <algorithm>
#include <exception>
#include <limits>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <utility>

#include "file_watcher.hpp"

namespace vx::core {

namespace {

bool isIn(const Node& setting, const Node& node)
{
    return isAtOrUnder(setting.fullName(), node.fullName());
}

bool hasText(const std::optional<SettingsFile>& file, const std::optional<std::string>& text)
{
    return file ? file->text() == text : !text;
}

/// Clears a flag at the end of its scope.
class ClearOnExit
{
public:
    explicit ClearOnExit(bool& flag) : flag_(flag) {}
    ClearOnExit(const ClearOnExit&) = delete;
    ClearOnExit& operator=(const ClearOnExit&) = delete;
    ~ClearOnExit() { flag_ = false; }

private:
    bool& flag_;
};

}  // namespace

SettingsObserver::SettingsObserver(const SettingsTree& tree, LayerFiles files,
                                   DiagnosticCallback onDiagnostic)
    : onDiagnostic_(std::move(onDiagnostic)),
      tree_(tree),
      layers_(tree, std::move(files)),
      files_(layers_.paths()),
      watcher_(std::make_unique<FileWatcher>(files_)),
      states_(files_.size())
{
    for (std::size_t file = 0; file < files_.size(); ++file) {
        layers_.setContent(file, std::nullopt);
    }
    for (std::size_t file = 0; file < files_.size(); ++file) {
        reportUnwatched(file);
        if (auto read = reload(file)) {
            layers_.setContent(file, std::move(read->content));
        }
    }
    deliver({});
}

SettingsObserver::~SettingsObserver() = default;

Subscription SettingsObserver::subscribe(const Node& node, ChangeCallback onChange)
{
    const Node& observed = node.kind() == NodeKind::alias ? resolveSetting(tree_, node) : node;
    auto subscriber = std::make_shared<const Subscriber>(Subscriber{observed, std::move(onChange)});
    std::erase_if(subscribers_, [](const auto& known) { return known.expired(); });
    subscribers_.push_back(subscriber);
    return subscriber;
}

int SettingsObserver::descriptor() const noexcept
{
    return watcher_->descriptor();
}

void SettingsObserver::dispatch(std::chrono::milliseconds timeout)
{
    if (std::exchange(isDispatching_, true)) {
        throw std::logic_error("a callback must not dispatch changes of settings");
    }
    const ClearOnExit dispatching(isDispatching_);
    constexpr std::chrono::milliseconds forEver(-1);
    constexpr std::chrono::milliseconds longest(std::numeric_limits<int>::max());
    pollfd waiting{descriptor(), POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(std::clamp(timeout, forEver, longest).count())) <= 0) {
        return;
    }
    std::vector<FileContent> contents;
    for (const std::size_t file : watcher_->takeChanged()) {
        reportUnwatched(file);
        if (auto read = reload(file)) {
            contents.push_back(*std::move(read));
        }
    }
    deliver(layers_.replaceContents(std::move(contents), [this](const Node& setting) {
        return std::ranges::any_of(subscribers_, [&setting](const auto& known) {
            const auto subscriber = known.lock();
            return subscriber && isIn(setting, subscriber->node);
        });
    }));
}

std::optional<FileContent> SettingsObserver::reload(std::size_t file)
{
    FileState& state = states_[file];
    const auto& before = layers_.files()[file].content;
    const auto report = [&](const char* error, Position position) {
        if (!std::exchange(state.isDamaged, true)) {
            const char* until = before ? "; its last valid content applies until it is fixed"
                                       : "; it counts as empty until it is fixed";
            diagnostics_.push_back({"", std::string(error) + until, std::move(position)});
        }
    };
    std::optional<std::string> text;
    try {
        text = readFile(files_[file]);
        FileContent read{file};
        const bool isChange = !hasText(before, text);
        if (isChange && text) {
            read.content.emplace(*text);
        }
        state.isDamaged = false;
        return isChange ? std::optional(std::move(read)) : std::nullopt;
    } catch (const ParseError& error) {
        report(error.what(), positionAt(*text, error.offset(), files_[file]));
    } catch (const std::runtime_error& error) {
        report(error.what(), {});  // which names the file
    }
    return std::nullopt;
}

void SettingsObserver::reportUnwatched(std::size_t file)
{
    const std::string& problem = watcher_->problem(file);
    if (!problem.empty() && !states_[file].isUnwatched) {
        diagnostics_.push_back({"", problem + "; changes of " + files_[file].string() + " are not noticed"});
    }
    states_[file].isUnwatched = !problem.empty();
}

void SettingsObserver::deliver(const std::vector<EffectiveChange>& changes)
{
    std::exception_ptr thrown;
    const auto call = [&thrown](const auto& callback, const auto& argument) {
        try {
            callback(argument);
        } catch (...) {
            thrown = thrown ? thrown : std::current_exception();
        }
    };
    for (const Diagnostic& diagnostic : std::exchange(diagnostics_, {})) {
        call(onDiagnostic_, diagnostic);
    }
    const auto subscribers = subscribers_;  // callbacks may add others
    for (const EffectiveChange& change : changes) {
        for (const auto& known : subscribers) {
            const auto subscriber = known.lock();  // kept while it is called, in case it unsubscribes itself
            if (subscriber && isIn(*change.setting, subscriber->node)) {
                call(subscriber->onChange, change);
            }
        }
    }
    if (thrown) {
        std::rethrow_exception(thrown);
    }
}

}  // namespace vx::core
