#pragma once

// Command lines as a person types them.

#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"

namespace brindle {

/// Words between blanks; '…' holds one together, and '' is an empty one.
inline std::vector<std::string> split_words(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false;
  bool open = false;
  for (const char c : line) {
    if (c == '\'') quoted = !quoted;
    if (c == ' ' && !quoted) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    if (c != '\'') words.back() += c;
  }
  return words;
}

inline CommandLine parse_line(std::string_view line) {
  const std::vector<std::string> words = split_words(line);
  std::vector<const char*> pointers;
  for (const std::string& word : words) pointers.push_back(word.c_str());
  return parse_arguments(pointers);
}

}  // namespace brindle
