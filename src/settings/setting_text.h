#pragma once

// Settings as a person types and reads them: `--set KEY=VALUE`, and the table of `brindle settings`.
//
// A flag is 0, 1, true, false, yes or no; a number is decimal; a text stands as it is. A date is ISO 8601
// ("2026-11-21T10:00:00Z", "2026-11-21T10:00+01:00", without a zone in the zone of this computer) or "now". The members
// of a list are joined by ";", with blanks around them passed over; an extension is put into the form the lists hold
// (".JPG"). In a mask, a token in angle brackets may hold ";" and blanks itself.
//
// Texts here are UTF-8, and bytes that are not survive as in file names. Functions are pure but for "now" and the zone.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/rename_settings.h"
#include "settings/settings_table.h"
#include "settings/stored_value.h"

namespace brindle {

/// How the token of a mask becomes a field; the default knows no catalogue and makes it a text of the user's own.
using FieldOfToken = MetaDataField (*)(std::u16string_view token);

/// Sets one key. Returns what is wrong, in one line without capital or full stop, and leaves the settings alone; none
/// when all went well. `appVersion` is accepted and has no effect.
std::optional<std::string> set_from_text(RenameSettings& settings, std::string_view key, std::string_view value,
                                         FieldOfToken field_of = field_of_token);

/// Applies "KEY=VALUE" texts in order, all or none, and then brings in line what belongs together: naming only one of
/// `isFiles` and `isFolders` sets the other to the opposite, and a mask whose list or separator was named, but which
/// was not named itself, is made anew.
std::optional<std::string> apply_assignments(RenameSettings& settings, std::span<const std::string_view> assignments,
                                             FieldOfToken field_of = field_of_token);

/// The text of a setting, which set_from_text() takes back; "" for an absent text. Dates are in UTC.
std::string text_of_setting(const RenameSettings& settings, const SettingRow& row);

/// "boolean", "integer", "text", "date", "list" or "tag list".
std::string_view type_name(const SettingRow& row);

struct SettingDescription {
  std::string_view key;
  std::string_view type;
  std::string default_text;  ///< as text_of_setting() gives it; "now" for the date
  std::string_view meaning;
};

/// Every key in record order.
std::vector<SettingDescription> describe_settings();

}  // namespace brindle
