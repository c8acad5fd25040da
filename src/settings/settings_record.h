#pragma once

// The settings record: what a profile file and the user defaults store. Pure; any thread.

#include <optional>

#include "plist/property_value.h"
#include "settings/rename_settings.h"

namespace brindle {

/// Keys and stored values: flags and numbers as decimal text, texts and the date as they are, the four lists archived.
using SettingsRecord = PropertyDictionary;

/// The record of the settings, `appVersion` first. It ends before the first absent text, so a record without a list
/// file lacks `renameFile`, and one whose `alphaNumericSeperator` is absent ends there; this is what the format is.
SettingsRecord getCurrentSettings(const RenameSettings& settings);

/// Files or folders: all members that say so.
void set_mode(RenameSettings& settings, bool folders);

/// What the owner of the file list and of the controls has to do after a record was applied. In any case nothing is
/// ready for renaming any more (`isHasFilesForRenaming` becomes false).
struct SettingsOutcome {
  std::optional<Date> date_left_out;  ///< of the record: another day or time than the settings have, and keep
};

/// Writes a record into the settings and rebuilds the two masks from their lists. Keys that the record lacks keep their
/// values. `appVersion`, `dateTimeCustomDate`, unknown keys and values of a wrong kind are passed over.
SettingsOutcome setSettings(RenameSettings& settings, const SettingsRecord& record);

/// Whether these settings rename by `dateTimeCustomDate`: a date left out would have been in the new names.
bool uses_custom_date(const RenameSettings& settings);

}  // namespace brindle
