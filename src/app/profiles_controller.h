#pragma once

// Profiles: the settings as a record, in files and in the window. Main thread.

#include <string>

#include "app/list_controller.h"
#include "app/rules_controller.h"
#include "settings/settings_record.h"

namespace brindle {

class ProfilesController {
 public:
  ProfilesController(MutableWindowModel& model, JobsController& jobs, ListController& list, RulesController& rules)
      : model_(model), jobs_(jobs), list_(list), rules_(rules) {}

  const std::string& currProfileFile() const { return currProfileFile_; }  ///< on-disk bytes; "" when none is open
  std::string window_title() const;

  void loadProfile();
  bool saveProfile();
  bool saveAsProfile();
  bool saveNewProfile(const std::string& path);
  void loadProfileFromSheet(const std::string& path) { setCurrentSettings(path); }
  void setCurrentSettings(const std::string& path);
  bool setSettings(const SettingsRecord& record);
  void loadEmptyProfile();

  // For other controllers.

  /// At once. False, with the reason told, when it cannot be read.
  bool open_profile(const std::string& path);
  /// Saves the open profile where the preferences say so, before it is left.
  void save_left_profile();
  /// None is open any more: it was deleted, or could not be opened.
  void forget_profile();
  /// The same for the next start too.
  void close_profile();

 private:
  const RenameSettings& values() const { return model_.values(); }
  DesktopPort& desktop() const { return model_.ports().desktop; }
  bool show_quietly(const SettingsRecord& record);
  void apply_record(const SettingsRecord& record);
  void tell_date_left_out(Date date);
  void replace_settings(RenameSettings settings);
  void start_with_method();
  void set_curr_profile(const std::string& path);
  SettingsRecord record_of_profile() const;
  bool write_profile(const std::string& path);

  MutableWindowModel& model_;
  JobsController& jobs_;
  ListController& list_;
  RulesController& rules_;
  std::string currProfileFile_;
};

}  // namespace brindle
