#pragma once

// What a window shows: the list, the settings, what is going on. WindowModel is what views are given: they read it, and
// hear when it has changed; MutableWindowModel is the same in the hands of the controllers, who alone write it.
//
// Main thread. While state().isExecuting is true the list belongs to the job at hand (app/jobs_controller.h), and
// nobody else reads or writes it.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/ports.h"
#include "gather/recent_items.h"
#include "list/disk_names.h"
#include "list/file_list.h"
#include "metadata/photo_fields_cache.h"
#include "platform/date.h"
#include "settings/preferences.h"
#include "settings/run_choices.h"
#include "settings/settings_store.h"
#include "settings/user_defaults.h"

namespace brindle {

/// What has changed, as bits: views pull what they show.
enum class Changed : std::uint16_t {
  rows = 1,   ///< the list's rows or their order
  names = 2,  ///< new names, statuses and reasons of the rows; what is known of the pictures
  state = 4,  ///< something of WindowState
  rules = 8,  ///< the chain, or the selected rule
  recent_items = 16,
  profile = 32,      ///< the open profile
  preferences = 64,  ///< of the program or of the live preview
  masks = 128,       ///< the photo or the audio mask
  settings = 256,    ///< options of the methods
};
using ChangedSet = std::uint16_t;
constexpr ChangedSet operator|(Changed a, Changed b) {
  return static_cast<ChangedSet>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr ChangedSet operator|(ChangedSet a, Changed b) {
  return static_cast<ChangedSet>(a | static_cast<unsigned>(b));
}
constexpr bool has(ChangedSet set, Changed bit) {
  return (set & static_cast<unsigned>(bit)) != 0;
}

enum class Job : std::uint8_t { none, loading, preview, rename, undo, exporting, sorting, removing };

struct WindowState {
  // The job, in whose place of the list the window shows the loading box.

  Job job = Job::none;
  bool isExecuting = false;
  bool is_quiet = false;     ///< the live preview of a long list: no labels, no loading box, the view just keeps still
  std::string status_label;  ///< what it does, then the item it is at (display form, UTF-8)
  std::string count_label;   ///< "Files found: 12"
  std::size_t done = 0;      ///< items
  std::size_t total = 0;     ///< 0 when not known
  std::string lastActionTimeTaken;
  std::string unreadable_label;  ///< "2 folders could not be read"; empty when all could
  std::string unreadable_list;   ///< which, and why: a line each (UTF-8); of many the first

  std::size_t item_count = 0;  ///< rows of the list, as of the last moment when no job ran

  bool isHasFilesForRenaming = false;
  bool isRulePreview = false;  ///< the new names came from the chain

  // Which commands are on.

  bool preview_enabled = false;
  bool rename_enabled = false;
  bool shows_empty_hint = true;  ///< the list is empty, and says what to do

  /// A job runs that does not make way for a command.
  bool is_busy() const { return isExecuting && !is_quiet; }
};

/// How the preview follows what is typed. Stored in the user defaults.
struct LivePreviewPreferences {
  bool isLivePreviewEnabled = true;
  bool isLivePreviewAllFiles = false;
  std::u16string livePreviewFilesLimit = u"2500";  ///< items; what is no number counts as 0
};

/// The column that the list was last sorted by; "" after any other change of order.
struct Sorting {
  std::string column;
  bool ascending = true;
};

class WindowModel {
 public:
  /// Hears, after each change, what may have changed. It may add and remove observers, itself included.
  using Observer = std::function<void(ChangedSet)>;

  WindowModel(const WindowModel&) = delete;
  WindowModel& operator=(const WindowModel&) = delete;

  /// What remove_observer() takes; observers are called in the order of adding.
  std::uint32_t add_observer(Observer observer);
  void remove_observer(std::uint32_t id);

  const WindowState& state() const { return state_; }
  const FileList& files() const { return files_; }
  const Sorting& sorting() const { return sorting_; }
  /// What the pictures of the list say of themselves. Changed::names is told when more of it is known.
  PhotoFieldsCache& photo_fields() { return photo_fields_; }
  /// Fields write into it as they are edited; Changed::settings is told for each change.
  SettingsStore& settings() { return settings_; }
  const RenameSettings& values() const { return settings_.settings(); }
  const Preferences& preferences() const { return preferences_; }
  const LivePreviewPreferences& live_preview() const { return live_preview_; }
  const RunChoices& choices() const { return choices_; }
  bool include_hidden() const { return include_hidden_; }  ///< hidden items are listed too
  const std::vector<RecentItem>& recentItems() const { return recent_.items(); }
  UserDefaults& user_defaults() { return defaults_; }
  const Ports& ports() const { return ports_; }
  Date now() const { return clock_(); }

 protected:
  WindowModel(const Ports& ports, std::function<Date()> clock);
  ~WindowModel() = default;

  void tell_observers(ChangedSet changed);

  Ports ports_;
  std::function<Date()> clock_;
  SettingsStore settings_;
  UserDefaults defaults_;
  Preferences preferences_;
  LivePreviewPreferences live_preview_;
  RunChoices choices_;
  RecentItems recent_;
  bool include_hidden_ = false;
  FileList files_;
  Sorting sorting_;
  WindowState state_;

 private:
  std::vector<std::pair<std::uint32_t, Observer>> observers_;
  std::uint32_t last_observer_ = 0;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  PhotoFieldsCache photo_fields_;
};

/// What the proposed names of the list were made with.
struct NameSource {
  std::optional<Method> method;
  std::int32_t generalOptionIndex = 0;
  bool is_live = false;  ///< by the live preview, and nothing has been done to them since
  bool permute = false;  ///< names were promised that others leave
};

class MutableWindowModel final : public WindowModel {
 public:
  /// The ports outlive the model. The clock is the system's unless a test brings its own.
  explicit MutableWindowModel(const Ports& ports, std::function<Date()> clock);

  using WindowModel::files;
  FileList& files() { return files_; }
  using WindowModel::state;
  WindowState& state() { return state_; }
  using WindowModel::sorting;
  Sorting& sorting() { return sorting_; }
  using WindowModel::preferences;
  Preferences& preferences() { return preferences_; }
  using WindowModel::live_preview;
  LivePreviewPreferences& live_preview() { return live_preview_; }
  using WindowModel::choices;
  RunChoices& choices() { return choices_; }
  RecentItems& recent() { return recent_; }
  void set_include_hidden(bool include) { include_hidden_ = include; }
  DiskNames& disk_names() { return disk_names_; }

  NameSource names_made_with;
  /// Names were typed, rows put into order or taken out: no load brings that back.
  bool is_list_worked_on = false;

  /// Works out what follows from the rest of the state: which commands are on, and the number of items.
  void update_state();
  /// The same, and tells.
  void tell(ChangedSet changed);
  void tell(Changed changed) { tell(static_cast<ChangedSet>(changed)); }
  /// What is said of a list that has other items now.
  void count_list();
  /// Writes settings without waking the live preview.
  void commit_quietly(RenameSettings edited);
  /// Writes the user defaults; a failure is logged.
  void save_user_defaults();
  /// Asks about the list and the names shown: no live preview changes them meanwhile. Whether the first button was
  /// chosen.
  bool ask_about_list(Alert question, std::string_view yes = "YES", std::string_view no = "NO");
  bool is_asking() const { return is_asking_; }

 private:
  DiskNames disk_names_;
  bool is_asking_ = false;
};

}  // namespace brindle
