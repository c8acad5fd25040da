#include "app/profile_sheet_controller.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "app/document_name.h"
#include "app/profiles_controller.h"
#include "list/file_order.h"
#include "platform/ascii.h"
#include "platform/atomic_file.h"
#include "platform/date.h"
#include "platform/file_name.h"
#include "platform/folder_handle.h"
#include "platform/message_log.h"
#include "platform/trash.h"
#include "settings/preferences.h"
#include "settings/profile_file.h"
#include "text/date_format.h"
#include "text/string_utilities.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::string_view profile_title = "PROFILETITLE";

// Whether anything stands there; what cannot be told counts as there.
bool exists(const std::string& path) {
  return file_dates(path).status().error() != ENOENT;
}

std::string remove_file(const std::string& path) {
  if (move_to_trash(path).ok() || ::unlink(path.c_str()) == 0) return {};
  return system_error_text(errno);
}

}  // namespace

ProfileSheetController::ProfileSheetController(BrindleAppController& app)
    : SheetController(app), app_profiles_(app.profiles()) {
  loadProfiles();
}

std::string ProfileSheetController::defaultProfileFolderPath() {
  return default_profile_folder();
}

void ProfileSheetController::loadProfiles() {
  profiles_.clear();
  const std::string path = defaultProfileFolderPath();
  const FolderHandle folder = FolderHandle::open(path);
  FolderReader reader;
  FolderEntry entry;
  if (folder) reader.start(folder);
  while (folder && reader.next(entry)) {
    if (entry.kind == EntryKind::folder || !has_extension(entry.name, profile_extension)) continue;
    const Result<FileDates> dates = file_dates(path + "/" + std::string(entry.name));
    if (!dates.ok()) continue;
    const std::string created = to_utf8(format_date(dates->creation, u"yyyy-MM-dd HH:mm:ss"));
    profiles_.push_back({std::string(entry.name), created, dates->creation});
  }
  selected_.reset();
  sort();
}

void ProfileSheetController::sort() {
  std::ranges::stable_sort(profiles_, [this](const ProfileRecord& a, const ProfileRecord& b) {
    const ProfileRecord& first = ascending_ ? a : b;
    const ProfileRecord& second = ascending_ ? b : a;
    if (sort_column_ == "dateCreated") return first.date < second.date;
    return compareFiles(decode_file_name(first.profileName), decode_file_name(second.profileName)) < 0;
  });
}

void ProfileSheetController::sortDescriptorsDidChange(std::string_view column, bool ascending) {
  sort_column_ = column;
  ascending_ = ascending;
  const std::string name = selected_ ? profiles_[*selected_].profileName : std::string();
  sort();
  if (selected_) {
    const auto found = std::ranges::find(profiles_, name, &ProfileRecord::profileName);
    selected_ = static_cast<std::size_t>(found - profiles_.begin());
  }
  tell();
}

void ProfileSheetController::tableViewSelectionDidChange(std::optional<std::size_t> row) {
  select(row && *row < profiles_.size() ? row : std::nullopt);
  tell();
}

void ProfileSheetController::select(std::optional<std::size_t> row) {
  selected_ = row;
  currProfileFilePath_ = row ? defaultProfileFolderPath() + "/" + profiles_[*row].profileName : std::string();
}

std::string ProfileSheetController::objectValue(std::string_view column, std::size_t row) const {
  if (row >= profiles_.size()) return {};
  if (column == "profileName") return to_utf8(decode_file_name(profiles_[row].profileName));
  return column == "dateCreated" ? profiles_[row].dateCreated : std::string();
}

void ProfileSheetController::loadProfile() {
  if (currProfileFilePath_.empty()) return show_alert(ports(), make_alert(profile_title, "PROFILESELECT"));
  if (!can_begin()) return;
  app_profiles_.loadProfileFromSheet(currProfileFilePath_);
  close();
}

// Where the new profile goes; "" with `fault` set when that is no name for a file.
std::string ProfileSheetController::new_profile_path(std::string& fault) const {
  constexpr std::size_t longest_name = 255;
  std::string name;
  const std::u16string text = on_disk(newProfileName_) + u"." + decode_file_name(profile_extension);
  fault = describe(encode_file_name(text, name, longest_name));
  return fault.empty() ? defaultProfileFolderPath() + "/" + name : std::string();
}

void ProfileSheetController::saveProfile() {
  ports().desktop.end_editing();
  if (newProfileName_.empty()) return show_alert(ports(), make_alert(profile_title, "PROFILEENTERNEWNAME"));
  std::string fault;
  const std::string path = new_profile_path(fault);
  if (fault.empty() && exists(path) && !ask(ports(), make_alert(profile_title, "PROFILEOVERWRITECONFIRM"))) return;
  if (!fault.empty() || !app_profiles_.saveNewProfile(path)) {
    return show_alert(ports(), make_alert(profile_title, "PROFILESAVEDFAILED"), AlertStyle::critical, fault);
  }
  loadProfiles();
  select(std::nullopt);
  newProfileName_.clear();
  tell();
}

void ProfileSheetController::deleteProfile() {
  if (currProfileFilePath_.empty()) return show_alert(ports(), make_alert(profile_title, "PROFILESELECT"));
  if (!ask(ports(), make_alert(profile_title, "PROFILEDELETECONFIRM"))) return;
  const std::string reason = remove_file(currProfileFilePath_);
  if (!reason.empty()) log_failure("deleteProfile", reason);
  app_profiles_.forget_profile();
  loadProfiles();
  select(std::nullopt);
  tell();
}

}  // namespace brindle
