#pragma once

// Notification of changes of effective values that come from settings files.

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/export.hpp>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vx::core {

class FileWatcher;

/// Keeps a callback subscribed until it is destroyed or reset, which the callback itself may do. May outlive
/// the observer.
using Subscription = std::shared_ptr<const void>;

/// Calls back when settings files change and with them the effective values of settings.
///
/// All calls are made by dispatch(), on its thread. The observer has no thread and no locks of its own: only
/// one thread at a time may use it, and the subscriptions to it. Several observers may share a tree.
///
/// A program with an event loop calls dispatch() whenever descriptor() is readable; another one gives it a
/// timeout, on a thread of its own if it likes.
///
/// Changes that are made faster than they are dispatched are coalesced; the last call for a setting has its
/// final value. A file that cannot be read, is damaged or too large is reported as a diagnostic once, until
/// it is whole again; meanwhile its last valid content applies, at first none. A file that is removed has no
/// settings. A file that is written in place is read when its writer closes it.
class VX_API SettingsObserver
{
public:
    /// Receives a change; `before` and `after` differ in value.
    using ChangeCallback = std::function<void(const EffectiveChange&)>;
    /// Receives what is wrong with a settings file, or with watching it.
    using DiagnosticCallback = std::function<void(const Diagnostic&)>;

    /// Watches and reads the files, and calls `onDiagnostic` for those that are damaged. The tree must
    /// outlive the observer. Throws what `onDiagnostic` throws, and std::system_error when the system has no
    /// means to watch files left.
    SettingsObserver(const SettingsTree& tree, LayerFiles files, DiagnosticCallback onDiagnostic);
    SettingsObserver(const SettingsObserver&) = delete;
    SettingsObserver& operator=(const SettingsObserver&) = delete;
    /// Must not be called by a callback.
    ~SettingsObserver();

    /// Calls `onChange` for each change of a setting, of any setting in a group (in the root, of all
    /// settings), or of the target of an alias. Throws what resolveSetting throws for an alias. A callback
    /// may subscribe others; they are called from the next dispatch() on.
    [[nodiscard]] Subscription subscribe(const Node& node, ChangeCallback onChange);

    /// Returns a descriptor that is readable when dispatch() has something to do; to be polled only.
    [[nodiscard]] int descriptor() const noexcept;

    /// Waits for changes of files, for the timeout at most, or for ever if it is negative, and makes the
    /// calls for them, in the order of the paths. It returns early when a change has no effect on any value,
    /// and when a signal interrupts it. If callbacks throw, all others are called first; then the first
    /// exception is passed on. Throws std::logic_error when a callback calls it.
    void dispatch(std::chrono::milliseconds timeout = {});

    /// Returns the layers as of the last dispatch(), for the values that the calls are about.
    [[nodiscard]] Layers& layers() noexcept { return layers_; }

private:
    struct Subscriber
    {
        const Node& node;  ///< a group or setting
        ChangeCallback onChange;
    };
    struct FileState
    {
        bool isDamaged = false;
        bool isUnwatched = false;
    };

    /// Returns a file's content if it has changed; if it is damaged, adds a diagnostic.
    [[nodiscard]] std::optional<FileContent> reload(std::size_t file);
    void reportUnwatched(std::size_t file);
    void deliver(const std::vector<EffectiveChange>& changes);

    DiagnosticCallback onDiagnostic_;
    const SettingsTree& tree_;
    Layers layers_;
    std::vector<std::filesystem::path> files_;  ///< of layers_
    std::unique_ptr<FileWatcher> watcher_;
    std::vector<FileState> states_;  ///< of files_
    std::vector<Diagnostic> diagnostics_;
    std::vector<std::weak_ptr<const Subscriber>> subscribers_;
    bool isDispatching_ = false;
};

}  // namespace vx::core
