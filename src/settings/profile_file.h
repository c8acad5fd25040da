#pragma once

// Profile files (extension "brprofile"): one settings record as an XML property list.
//
// Any thread. What a Status says names the file.

#include <string>
#include <string_view>

#include "platform/status.h"
#include "settings/settings_record.h"

namespace brindle {

inline constexpr std::string_view profile_extension = "brprofile";

/// Reads the record of a profile. What its keys mean is the affair of setSettings.
Result<SettingsRecord> read_profile_file(const std::string& path);

/// Writes the record in place of the old file, atomically.
Status write_profile_file(const std::string& path, const SettingsRecord& record);

}  // namespace brindle
