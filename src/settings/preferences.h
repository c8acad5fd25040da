#pragma once

// The preferences: five values in "preferences.plist" in the data folder, an XML property list.
//
// Folder paths are on-disk bytes, absolute. Any thread; whoever owns a Preferences object sees to it alone.

#include <string>
#include <string_view>

#include "platform/status.h"

namespace brindle {

struct Preferences {
  std::string defaultLogFolderPath;
  std::string defaultProfileFolderPath;
  std::string defaultRulesFolderPath;
  bool automaticSaveCurrProfile = false;  ///< an open profile is saved when it is left and at quit
  bool isShowHubIcon = true;              ///< the drop hub is shown
};

/// The data folder's "Logs", "Profiles" and "Rules", and the two flags as above.
Preferences default_preferences();

/// The path of the preferences file; "" without a data folder.
std::string preferences_path();

/// Takes each of the five values that the file has, in whichever form it stands (flags: a boolean, a number or a text),
/// and keeps the others. A folder that is no absolute path counts as absent. False when the file cannot be read as
/// preferences.
bool loadPreferences(Preferences& preferences);

/// Writes the file atomically, in a data folder that is made when there is none: "automaticSaveCurrProfile" as the text
/// "0" or "1", "isShowHubIcon" as a boolean.
Status savePreferences(const Preferences& preferences);

// What the file says now; else the data folder's own subfolder. Read afresh each time, so a change shows once it has
// been saved. Empty when there is no data folder and the file names none.

std::string default_log_folder();
std::string default_profile_folder();
std::string default_rules_folder();

}  // namespace brindle
