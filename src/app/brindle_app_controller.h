#pragma once

// The main controller: the list, the settings, the chain, and every command of the window, without any toolkit.
//
// Everything is called on the main thread. A job (load, preview, rename, undo, export, a long sort) runs through the
// worker port; while state().isExecuting is true the list belongs to it, and commands that would touch it do nothing.
// Paths that come in meanwhile, from whatever side, wait for its end and are listed then, in the order they came. Only
// a quiet job (WindowState::is_quiet) makes way: it is cancelled, and the command follows when it has ended. Defined by
// concern in controller_*.cpp.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/disposal.h"
#include "app/live_preview_preferences.h"
#include "app/ports.h"
#include "app/rules_controller.h"
#include "app/window_state.h"
#include "gather/gather.h"
#include "gather/list_import.h"
#include "gather/recent_items.h"
#include "list/disk_names.h"
#include "list/file_list.h"
#include "metadata/photo_fields_cache.h"
#include "platform/job.h"
#include "run/apply.h"
#include "run/preview.h"
#include "settings/preferences.h"
#include "settings/settings_record.h"
#include "settings/settings_store.h"
#include "settings/user_defaults.h"

namespace brindle {

class BrindleAppController final : private RulesOwner {
 public:
  /// `ports` outlive the controller, and no job may be running when it goes. The clock is the system's unless a test
  /// brings its own (milliseconds since 1970).
  explicit BrindleAppController(const Ports& ports, std::function<Date()> clock = {});
  BrindleAppController(const BrindleAppController&) = delete;
  BrindleAppController& operator=(const BrindleAppController&) = delete;
  ~BrindleAppController() override;

  // Start and quit (controller_start.cpp).

  /// Window set-up: folders, preferences, recent folders, live-preview preferences; finishes runs that were
  /// interrupted. False when the data folder cannot be had: that has been told, and the program was asked to quit.
  bool awakeFromNib();
  /// Tells, once, of the renamings and undos that were found interrupted at the start. True when the person wants to
  /// see the undo sheet.
  bool tell_interrupted_runs();
  /// Restores the last session: its profile or its settings, and its chain.
  void applicationDidFinishLaunching();
  /// Saves the session. False while a job runs (a quiet one is cancelled): ask again when it has ended.
  bool applicationShouldTerminate();

  // What is shown. Observers are called after each change, on the main thread, with what may have changed.

  using Observer = std::function<void(ChangedSet)>;
  std::uint32_t add_observer(Observer observer);
  void remove_observer(std::uint32_t id);

  const WindowState& state() const { return state_; }
  /// Not to be read while a job runs.
  const FileList& files() const { return files_; }
  /// What the pictures of the list say of themselves. An observer hears Changed::names when more of it is known.
  PhotoFieldsCache& photo_fields() { return *photo_fields_; }
  SettingsStore& settings() { return settings_; }
  const RenameSettings& values() const { return settings_.settings(); }
  RulesController& rules_controller() { return rules_; }
  const RulesController& rules_controller() const { return rules_; }
  const std::vector<RecentItem>& recentItems() const { return recent_.items(); }
  UserDefaults& user_defaults() { return defaults_; }
  const Ports& ports() const { return ports_; }
  std::string window_title() const;

  // Adding and removing items (controller_files.cpp).

  void addFilesAction();
  void addFolderAction();
  void addFilesFolders();
  /// A drop on the file table.
  void acceptDrop(std::vector<std::string> paths);
  /// The choose-items sheet was applied. The paths are loaded in any case, in the mode that holds then.
  void PasteboardItemsControllerDidFinish(bool folders, bool isProcessSubfolders, std::vector<std::string> paths);
  /// 0 is the empty entry. Empties the list; asks when the person's work on it would go with it.
  void recentFolderChanged(std::size_t entry);
  /// The files on the clipboard.
  void addFilesFoldersFromFinder();
  /// In Files mode, unless the person keeps a list of folders: then in Folders mode.
  void loadFiles(std::vector<std::string> paths);
  /// From a long list, by a job.
  void RemoveFiles(const RowSet& rows);
  void clearFilesFolders();
  /// The radio buttons of the mode. Asks when the person's work on the list would go with it.
  void filesFoldersOptionChanged(bool folders);
  void setIncludeSubFolders(bool include);
  /// "Show hidden items", remembered.
  bool include_hidden() const { return include_hidden_; }
  void setIncludeHidden(bool include);

  // Order (controller_order.cpp). Rows are those of the list.

  /// These rows stay with their items from now on: files().followed() says where they are. While a job has the list,
  /// nothing happens.
  void follow_rows(FollowedRows rows);

  /// Sorts by a column of the table ("filenameWithExtension", "newFilename", "fileLocation", …); ties keep their order.
  /// A long list, and the columns of photographs, are sorted by a job.
  void sort_by_column(std::string_view column, bool ascending);
  /// Which column the list was last sorted by; "" after any other change of order.
  std::string_view sorted_column() const { return sorted_column_; }
  bool sorted_ascending() const { return sorted_ascending_; }
  // Moving far in a long list is a job.

  /// Puts rows, in their order, before another one (the number of rows: at the end).
  void move_rows(const RowSet& rows, std::size_t before);
  void move_rows_up(const RowSet& rows);
  void move_rows_down(const RowSet& rows);

  // Preview (controller_preview.cpp).

  void actionPreview();
  void actionPreviewRule();
  void cancelProcess();
  const LivePreviewPreferences& live_preview() const { return live_preview_; }
  void setLivePreviewPreferences(const LivePreviewPreferences& preferences);
  /// Puts a name typed by hand into a row, in display form, and settles its status.
  void set_new_name(std::size_t row, std::u16string_view text);

  // Rename (controller_apply.cpp).

  void actionApply();

  // Choices of the method tabs (controller_methods.cpp): the handlers of radio buttons, which set the flags that belong
  // together and wake the live preview.

  void select_tab(std::int32_t tab);
  void alphaNumericIncrementDecrementChanged(bool decrement);
  void alphaNumericNumericAlphabeticChanged(bool alphabetic);
  void insertDeleteChanged(bool deletes);
  void insertOptionChanged(std::int32_t option);
  void replaceRemoveChanged(std::int32_t choice);  ///< 0 replace, 1 remove, 2 remove characters
  /// What goes with the characters: 0 each of them, 1 what lies between occurrences, 2 that and the occurrences.
  void replaceRemoveRemoveTypeChanged(std::int32_t type);
  void prefixSuffixChanged(bool date);
  void dateTimeOptionsChanged(std::int32_t option);
  void dateTimeDateTypeChanged(std::int32_t option);
  void generalOptionsChanged(std::int32_t option);
  void pathComponentsOptionsChanged(std::int32_t option);

  // Masks and extension lists (controller_masks.cpp).

  /// A token button of the audio tab: "<Artist>", …, or a text of the user's own in angle brackets.
  void id3RenamingMaskActions(std::u16string_view entry);
  void id3RenamingMaskRemoveLast();
  void setPhotoMetaDataList(FieldList fields);
  void ExtensionsEditorControllerDidFinish(std::int32_t itemType, TextList extensions);

  // Rules (controller_rules.cpp).

  /// A rule of the options of the chosen tab; none, with `error` set where there is something to say.
  std::optional<Rule> getRule(std::string& error);
  bool addRule(std::string& error);
  void addToRule();
  struct RulesMenuItem {
    std::string title;  ///< the file name without its extension
    std::string file;   ///< its name in the rules folder
  };
  std::vector<RulesMenuItem> loadRulesMenu() const;
  void ruleMenuItemClick(const std::string& file);

  // Profiles (controller_profiles.cpp).

  const std::string& currProfileFile() const { return currProfileFile_; }
  bool isProfileLoading() const { return isProfileLoading_; }
  void loadProfile();
  bool saveProfile();
  bool saveAsProfile();
  bool saveNewProfile(const std::string& path);
  void loadProfileFromSheet(const std::string& path) { setCurrentSettings(path); }
  void setCurrentSettings(const std::string& path);
  bool setSettings(const SettingsRecord& record);
  void loadEmptyProfile();
  void loadDefaultProfile();
  /// A profile was deleted: none is open any more.
  void forget_profile();

  // Preferences (controller_preferences.cpp).

  const Preferences& preferences() const { return preferences_; }
  void setPreferences(const Preferences& preferences);  ///< saved at once; a failure is told
  std::optional<std::string> browseLogFolderPath(const std::string& current);
  std::optional<std::string> browseProfileFolderPath(const std::string& current);
  std::optional<std::string> browseRulesFolderPath(const std::string& current);

  // Documents and files handed to the application (controller_documents.cpp).

  enum class OpenReply : std::uint8_t { success, cancelled, failure };
  /// At once, or not: cancelled while a job runs.
  OpenReply openFiles(std::vector<std::string> paths);
  /// The same for callers who do not wait for the reply: what comes while a job runs is opened after it.
  void openFilesInTurn(std::vector<std::string> paths);

  // Rename from a list, export (controller_lists.cpp).

  void browseRenameFile();
  void loadRenameFile(bool folders);
  /// False, with a tooltip, when there is nothing to export.
  bool showExport();

  // For the sheets.

  /// Runs `work` as a job of this kind: sets the flags and labels around it. `finished` is called before the flags
  /// fall, also when the work was broken off by an exception, which is logged and told; `afterwards` when they have
  /// fallen, for what asks and tells. False, with nothing done, while another job runs.
  bool run_job(Job job, std::function<void(const JobControl&)> work, std::function<void()> finished,
               std::function<void()> afterwards = {});
  /// The list, for the work of an undo: its items follow what is moved back.
  FileList& files_for_undo() { return files_; }
  /// To be called when an undo has moved items back, before its job ends.
  void show_undone(std::size_t restored);
  void setStartTime();
  void showLastActionTimeTaken(std::string_view label_key);
  Date now() const { return clock_(); }

 private:
  class ProgressRelay;

  // RulesOwner
  std::optional<Rule> getCurrentRule() override;
  void setRule(const Rule& rule) override;
  std::string default_rules_folder() const override;
  void rules_changed() override;

  struct JobCall {
    Job job = Job::none;
    bool quiet = false;  // no labels, no progress, no time
    std::function<void(const JobControl&)> work;
    std::function<void()> finished;    // before the flags fall
    std::function<void()> afterwards;  // when they have fallen: what asks, or starts the next job
  };
  // What the proposed names of the list were made with.
  struct NameSource {
    std::optional<Method> method;
    std::int32_t generalOptionIndex = 0;
    bool is_live = false;  // by the live preview, and nothing has been done to them since
  };

  bool start_job(JobCall call);
  void job_finished(const JobCall& call, const std::string& failure);
  void show_progress();
  bool defer(std::function<void()> command);
  bool put_off(std::function<void()> request);
  void serve_requests();
  void tell(Changed changed) { tell(static_cast<ChangedSet>(changed)); }
  void tell(ChangedSet changed);
  void update_state();
  void count_list();
  void list_was_changed();

  bool make_data_folders();
  void read_defaults();
  void finish_interrupted_runs();
  void restore_rules();
  void keep_session();

  void add_files(std::vector<std::string> paths);
  void show_unreadable(const std::vector<UnreadablePath>& paths);
  /// When a list that has items may go without a question.
  enum class Asks : std::uint8_t { always, when_worked_on };
  bool may_empty_list(Asks asks);
  bool clear_list(Asks asks);
  void empty_list();
  /// The one way from Files to Folders and back: the list and its mode never disagree. Empties the list, or keeps it
  /// and the mode when that is what the person wants. Whether the wanted mode holds now.
  bool switch_mode(bool folders, Asks asks);
  void sort_rows(std::string_view column, bool ascending, const JobControl& control);
  bool can_move(const RowSet& rows) const;
  void put_into_order(std::size_t first, std::vector<std::uint32_t> order);

  void settings_changed(const SettingsChange& change);
  void rebuild_masks(const SettingsChange& change);
  void commit_quietly(const RenameSettings& edited);
  void schedule_quick_preview(std::chrono::milliseconds after);
  void quickPreviewTimerMethod();
  void drop_live_names();
  void quickPreview();
  void show_quick_preview(const PreviewResult& result);
  bool begin_preview();
  void doPreview();
  void doPreviewRule();
  void run_preview(const std::shared_ptr<RenamePlan>& plan);
  void show_preview(const PreviewResult& result);
  void tell_operation_error(const PreviewResult& result);
  void tell_refusal(const Refusal& refusal);

  void apply_names(const ApplyOptions& options);
  void show_apply(const ApplyResult& result, const ApplyOptions& options);
  void tell_failures(const ApplyResult& result, const ApplyOptions& options);
  void after_apply(const ApplyResult& result, ApplyOptions options);

  NewRule make_rule();
  void choose(RuleVariant variant, const std::function<void(RenameSettings&)>& edit);

  void apply_record(const SettingsRecord& record);
  void tell_date_left_out(Date date);
  void replace_settings(RenameSettings settings);
  bool open_profile(const std::string& path);
  void save_left_profile();
  void set_curr_profile(const std::string& path);
  void close_profile();
  bool write_profile(const std::string& path);

  bool is_document(std::string_view path) const;
  void open_document(const std::string& path);
  void open_rule_document(const std::string& path);
  void open_profile_document(const std::string& path);

  void import_list(const std::shared_ptr<FileRenameItem>& item);
  void drop_rename_file();

  Ports ports_;
  std::function<Date()> clock_;
  SettingsStore settings_;
  UserDefaults defaults_;
  Preferences preferences_;
  LivePreviewPreferences live_preview_;
  RecentItems recent_;
  RulesController rules_;
  FileList files_;
  Disposal disposal_;
  DiskNames disk_names_;
  std::unique_ptr<PhotoFieldsCache> photo_fields_;
  WindowState state_;
  std::atomic<bool> isCancelProcess_{false};
  std::function<void()> deferred_;              // the command that waits for a quiet job to end
  std::deque<std::function<void()>> requests_;  // the paths that wait for the end of a job
  bool quick_preview_is_stale_ = false;
  bool is_asking_ = false;          // about the list and the names shown
  bool is_list_worked_on_ = false;  // names typed, rows put into order or taken out: no load brings that back
  NameSource names_made_with_;
  std::string interrupted_renamings_;  // a line each, to be told
  std::string waiting_renamings_;
  std::string lost_renamings_;
  std::string interrupted_undos_;
  std::string currProfileFile_;
  bool isProfileLoading_ = false;
  bool include_hidden_ = false;
  std::string sorted_column_;
  bool sorted_ascending_ = true;
  Date startTime_;
  MainThreadPort::TimerId quickPreviewTimer_ = 0;
  MainThreadPort::TimerId previewRuleTimer_ = 0;
  MainThreadPort::TimerId loadFilesTimer_ = 0;
  std::shared_ptr<ProgressRelay> progress_;
  std::vector<std::pair<std::uint32_t, Observer>> observers_;
  std::uint32_t last_observer_ = 0;
};

}  // namespace brindle
