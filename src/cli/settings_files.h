#pragma once

// The files that keep settings and chains, as the command line takes them: a file that cannot be used ends the command.

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"
#include "methods/rule.h"
#include "settings/rename_settings.h"
#include "settings/settings_record.h"

namespace brindle {

/// The record of a profile. Throws UsageError.
SettingsRecord read_profile(const std::string& file);

/// Writes a profile's values over the settings.
SettingsOutcome start_from_profile(RenameSettings& settings, const SettingsRecord& record);

/// A remark, when settings that came from a profile would rename by another date than the one it fixed.
void note_date_left_out(const std::optional<Date>& date, Console& console);

/// Throws UsageError for a record that does not choose a method: the first one would run unasked.
void check_method(const SettingsRecord& record, const std::string& file);

/// The rules of a rule file, old method names repaired. Throws UsageError.
std::vector<Rule> read_rules(const std::string& file);

/// Throws UsageError for a chain that would rename nothing, or whose meaning is not known: no rule, none switched on,
/// or an active one of an unknown method.
void check_chain(const std::vector<Rule>& rules, const std::string& file);

/// Whether `line.file` is to be written: nothing stands there, or --yes or the person at the terminal replaces what
/// does. Throws UsageError when nobody can be asked, and when something stands there that is no file.
bool may_write(const CommandLine& line, Console& console);

/// A remark, when the window would not find a file of this name.
void note_extension(const std::string& file, std::string_view extension, Console& console);

}  // namespace brindle
