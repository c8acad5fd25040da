#pragma once

// The profile sheet: the profiles of the profile folder, to be opened, made and deleted. Main thread.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/sheet_controller.h"
#include "platform/date.h"

namespace brindle {

class ProfilesController;

struct ProfileRecord {
  std::string profileName;  ///< bytes, extension included
  std::string dateCreated;  ///< as text, in the user's zone
  Date date;                ///< the file's birth, or its modification where the disk keeps none
};

class ProfileSheetController final : public SheetController {
 public:
  /// Lists the profiles.
  explicit ProfileSheetController(BrindleAppController& app);

  const std::vector<ProfileRecord>& profiles() const { return profiles_; }
  std::optional<std::size_t> selected_row() const { return selected_; }
  void tableViewSelectionDidChange(std::optional<std::size_t> row);
  const std::string& currProfileFilePath() const { return currProfileFilePath_; }  ///< "" when none is selected
  /// What a column ("profileName", "dateCreated") says of a row; UTF-8, "" for other columns.
  std::string objectValue(std::string_view column, std::size_t row) const;
  /// Sorts by a column, now and whenever the list is read again. The selection stays on its profile.
  void sortDescriptorsDidChange(std::string_view column, bool ascending);

  /// The name typed for a new profile, without extension.
  const std::u16string& newProfileName() const { return newProfileName_; }
  void setNewProfileName(std::u16string_view name) { newProfileName_ = name; }

  static std::string defaultProfileFolderPath();
  void loadProfiles();
  /// Opens the selected profile and closes the sheet.
  void loadProfile();
  /// Writes the window's settings under the new name.
  void saveProfile();
  /// To the trash where there is one.
  void deleteProfile();

 private:
  std::string_view help_page() const override { return "Profiles.html"; }
  void sort();
  void select(std::optional<std::size_t> row);
  std::string new_profile_path(std::string& fault) const;

  ProfilesController& app_profiles_;
  std::vector<ProfileRecord> profiles_;
  std::optional<std::size_t> selected_;
  std::string currProfileFilePath_;
  std::u16string newProfileName_;
  std::string sort_column_;
  bool ascending_ = true;
};

}  // namespace brindle
