#pragma once

// The settings of the open window, and the signal of their changes.
//
// One thread: the store, its settings and its observers live on the window's thread, and nothing else calls in. A job
// gets a copy of settings().

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/settings_table.h"

namespace brindle {

/// What one commit changed. It names the keys; the values are pulled from the store.
struct SettingsChange {
  SettingSet keys;                 ///< the rows whose values differ from before
  bool isSettingsChanged = false;  ///< one of the keys that count as a change is among them, or signal()
  bool has_values = false;         ///< … and for one of these, neither the old nor the new value is absent
  bool is_quiet = false;           ///< made by a loading: fields show it, but it is nobody's wish for a new preview

  bool contains(std::string_view key) const {
    const SettingRow* row = find_setting(key);
    return row && keys[setting_index(*row)];
  }
};

class SettingsStore {
 public:
  using Observer = std::function<void(const SettingsChange&)>;

  explicit SettingsStore(RenameSettings settings = {}) : settings_(std::move(settings)) {}
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  const RenameSettings& settings() const { return settings_; }

  /// Calls `edit(RenameSettings&)` and tells the observers once what differs afterwards; nothing when nothing differs.
  template <class Edit>
  void commit(Edit&& edit) {
    RenameSettings edited = settings_;
    std::forward<Edit>(edit)(edited);
    replace(std::move(edited));
  }

  /// The same with a whole new record.
  void replace(RenameSettings edited);

  /// Tells a change of no key that counts as one: for the choice buttons, whose keys do not count.
  void signal() { tell({.keys = {}, .isSettingsChanged = true, .has_values = true}); }

  /// While one lives every change is told as a quiet one, those that observers make of it included.
  class Quiet {
   public:
    explicit Quiet(SettingsStore& store) : store_(store), before_(std::exchange(store.is_quiet_, true)) {}
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() { store_.is_quiet_ = before_; }

   private:
    SettingsStore& store_;
    bool before_;
  };

  /// Adds an observer, to be called after each change in the order of adding. It may commit: that change is told when
  /// the round is over. It may add and remove observers. Returns what remove_observer() takes.
  std::uint32_t add_observer(Observer observer);
  void remove_observer(std::uint32_t id);

 private:
  struct Entry {
    std::uint32_t id = 0;
    Observer observer;
  };

  void tell(SettingsChange change);
  void tell_everyone(const SettingsChange& change);

  RenameSettings settings_;
  bool is_quiet_ = false;
  std::vector<Entry> observers_;
  std::uint32_t last_id_ = 0;
  bool telling_ = false;
  std::vector<SettingsChange> waiting_;
};

}  // namespace brindle
