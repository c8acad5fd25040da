#pragma once

// What the window shows beside the list and the settings. Plain data, written by the controller alone.

#include <cstddef>
#include <cstdint>
#include <string>

namespace brindle {

/// What has changed, as bits: views pull what they show.
enum class Changed : std::uint16_t {
  rows = 1,   ///< the list's rows or their order
  names = 2,  ///< new names, statuses and reasons of the rows
  state = 4,  ///< something of WindowState
  rules = 8,  ///< the chain, or the selected rule
  recent_items = 16,
  profile = 32,      ///< the open profile
  preferences = 64,  ///< of the program or of the live preview
  masks = 128,       ///< the photo or the audio mask
};
using ChangedSet = std::uint16_t;
constexpr ChangedSet operator|(Changed a, Changed b) {
  return static_cast<ChangedSet>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr ChangedSet operator|(ChangedSet a, Changed b) {
  return static_cast<ChangedSet>(a | static_cast<unsigned>(b));
}
constexpr bool has(ChangedSet set, Changed bit) {
  return (set & static_cast<unsigned>(bit)) != 0;
}

/// What is going on.
enum class Job : std::uint8_t { none, loading, preview, rename, undo, exporting, sorting, removing };

struct WindowState {
  // The job. While one runs the list belongs to it: nobody else reads or writes it, and the window shows the loading
  // box in its place.

  Job job = Job::none;
  bool isExecuting = false;
  bool is_quiet = false;     ///< the live preview of a long list: no labels, no loading box, the view just keeps still
  std::string status_label;  ///< what it does, then the item it is at (display form, UTF-8)
  std::string count_label;   ///< "Files found: 12"
  std::size_t done = 0;      ///< items
  std::size_t total = 0;     ///< 0 when not known
  std::string lastActionTimeTaken;
  std::string unreadable_label;  ///< "2 folders could not be read"; empty when all could
  std::string unreadable_list;   ///< which, and why: a line each (UTF-8); of many the first

  std::size_t item_count = 0;  ///< rows of the list, as of the last moment when no job ran

  bool isHasFilesForRenaming = false;
  bool isRulePreview = false;  ///< the new names came from the chain

  // Which commands are on.

  bool preview_enabled = false;
  bool rename_enabled = false;
  bool shows_empty_hint = true;  ///< the list is empty, and says what to do
};

}  // namespace brindle
