#pragma once

// The user defaults: what the program remembers between runs, in one XML property list under
// $XDG_CONFIG_HOME/Tessalon/ (~/.config when unset).
//
// An object belongs to one thread at a time. Several programs may use the file at once: flush() writes back only what
// this object changed.

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/status.h"
#include "plist/property_value.h"

namespace brindle {

class UserDefaults {
 public:
  /// Reads the file at `path` when it is first asked for a value. A file that cannot be read holds nothing. One that is
  /// no property list is kept by the first flush(), beside the new one and with ".damaged" behind its name.
  explicit UserDefaults(std::string path = default_path());

  /// $XDG_CONFIG_HOME/Tessalon/Brindle4.plist; "" when no home folder can be told.
  static std::string default_path();

  /// The value of a key, or null; valid until the next call that is not const.
  const PropertyValue* find(std::string_view key);

  // The value of a key as other programs may have written it: a flag is a boolean, a number, or a text; a text may be a
  // number. `otherwise` where there is none, or one of another kind.

  bool boolean(std::string_view key, bool otherwise);
  std::u16string text(std::string_view key, std::u16string_view otherwise);

  void set(std::string_view key, PropertyValue value);
  void remove(std::string_view key);

  /// Writes what was changed since the last flush, atomically, into what the file holds by now; the folder is made
  /// (0700) when there is none. Two programs that flush at once take turns. On failure the changes are kept
  /// for the next flush; the sentence names the file.
  Status flush();

 private:
  std::string path_;
  bool read_ = false;
  PropertyDictionary values_;
  std::map<std::string, std::optional<PropertyValue>, std::less<>> changes_;  // none: removed
};

// The keys in use.

namespace user_default {
inline constexpr std::string_view last_profile = "LASTPROFILE";  ///< text: path of the open profile, or ""
inline constexpr std::string_view last_rule = "LASTRULE";        ///< data: keyed archive of the chain
inline constexpr std::string_view settings = "DEFAULTS";         ///< dictionary: a settings record
inline constexpr std::string_view recent_items = "RECENTITEMS";  ///< array of recent folders
inline constexpr std::string_view hub_position = "HUBPOSITION";  ///< text: "x,y" in pixels
inline constexpr std::string_view live_preview = "LIVEPREVIEW";  ///< flag
inline constexpr std::string_view live_preview_all_files = "LIVEPREVIEWALLFILES";      ///< flag
inline constexpr std::string_view live_preview_files_limit = "LIVEPREVIEWFILESLIMIT";  ///< text: a number of items
inline constexpr std::string_view run_choices = "RUNCHOICES";        ///< dictionary: see settings/run_choices.h
inline constexpr std::string_view include_hidden = "INCLUDEHIDDEN";  ///< flag: names that begin with "." are listed
}  // namespace user_default

}  // namespace brindle
