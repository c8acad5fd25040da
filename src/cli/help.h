#pragma once

// Help texts, made from the tables.

#include <cstddef>
#include <string>
#include <string_view>

#include "cli/command_table.h"
#include "cli/console.h"
#include "cli/method_words.h"

namespace brindle {

/// What `brindle --help` prints, wrapped to `width` columns.
std::string program_help(const Style& style, std::size_t width);
/// The commands whose first word this is.
std::string group_help(std::string_view first_word, const Style& style, std::size_t width);
std::string command_help(const CommandRow& command, const Style& style, std::size_t width);
std::string method_help(const MethodWord& method, const Style& style, std::size_t width);

/// "put a text into the name" as "Put a text into the name."
std::string sentence(std::string_view summary);

// Scripts that make a shell complete commands, methods, options and their choices; PATHs are completed as files.

std::string bash_completion();
/// The one for bash, which zsh runs too.
std::string zsh_completion();
std::string fish_completion();

/// The manual page, for man: all commands, options and methods of the tables.
std::string manual_page();

}  // namespace brindle
