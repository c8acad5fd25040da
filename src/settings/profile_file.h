#pragma once

// Profile files (extension "brprofile"): one settings record as an XML property list.
//
// Any thread. Errors are one sentence (UTF-8) that names the file, empty on success.

#include <string>
#include <string_view>

#include "settings/settings_record.h"

namespace brindle {

inline constexpr std::string_view profile_extension = "brprofile";

/// Reads the record of a profile; untouched on failure. What its keys mean is the affair of setSettings.
[[nodiscard]] std::string read_profile_file(const std::string& path, SettingsRecord& record);

/// Writes the record in place of the old file, atomically.
[[nodiscard]] std::string write_profile_file(const std::string& path, const SettingsRecord& record);

}  // namespace brindle
