#pragma once

// The words a command line is made of, as data: commands and methods are rows of constant tables (command_table.h,
// method_words.h) from which parsing, help and completions all follow.

#include <cstdint>
#include <span>
#include <string_view>

namespace brindle {

/// What an option means to the program.
enum class OptionId : std::uint8_t {
  files,
  folders,
  subfolders,
  no_subfolders,
  hidden,
  no_preserve_root,
  sort,
  from,
  nul,
  set,
  profile,
  rules,
  list,
  from_elsewhere,
  no_name,
  no_new_name,
  no_location,
  full_paths,
  no_header,
  all,
  json,
  yes,
  quiet,
  no_color,
  help,
  version,
};

struct OptionRow {
  OptionId id;
  std::string_view name;   ///< without the dashes
  char letter;             ///< the short form, 0 for none
  std::string_view value;  ///< how help calls its value; empty when it takes none. "a|b|c" is a choice
  std::string_view help;
};

/// Something to type, and what comes of it.
struct Example {
  std::string_view words;   ///< as typed in a shell, after "brindle" or, for a method, from its word on
  std::string_view before;  ///< for a method: a name …
  std::string_view after;   ///< … and what becomes of it
};

}  // namespace brindle
