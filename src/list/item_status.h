#pragma once

// The fixed texts that stand in an item's new-name field, and nothing else does but a proposed name.

#include <array>
#include <cstdint>
#include <string_view>

namespace brindle {

enum class ItemStatus : std::uint8_t {
  none,      ///< nothing has been computed: the field is empty
  proposed,  ///< the field holds a proposed name
  no_new_name,
  no_changes,
  file_already_exists,
  folder_already_exists,
  file_not_found,
  folder_not_found,
  renaming_ok,
};

inline constexpr std::array<std::u16string_view, 9> status_texts = {
    u"",
    u"",
    u"No New Name",
    u"No Changes",
    u"File Already Exists",
    u"Folder Already Exists",
    u"File Not Found",
    u"Folder Not Found",
    u"Renaming (OK)",
};

/// The text shown for a status; empty for `none` and `proposed`.
constexpr std::u16string_view status_text(ItemStatus status) {
  return status_texts[static_cast<std::size_t>(status)];
}

/// What a new-name field with this content means: the texts are compared literally.
constexpr ItemStatus status_of(std::u16string_view new_filename) {
  if (new_filename.empty()) return ItemStatus::none;
  for (std::size_t i = 2; i < status_texts.size(); ++i) {
    if (new_filename == status_texts[i]) return static_cast<ItemStatus>(i);
  }
  return ItemStatus::proposed;
}

/// An item with a terminal status is never renamed.
constexpr bool is_terminal(ItemStatus status) {
  return status >= ItemStatus::no_new_name;
}

/// What an item is. Packages are folders, so `package` is in the vocabulary only.
enum class ItemType : std::uint8_t { file = 0, folder = 1, alias = 2, package = 3 };

/// "Already exists" and "not found" come in a file and a folder wording; everything but a file takes the latter.
constexpr ItemStatus already_exists(ItemType type) {
  return type == ItemType::file ? ItemStatus::file_already_exists : ItemStatus::folder_already_exists;
}
constexpr ItemStatus not_found(ItemType type) {
  return type == ItemType::file ? ItemStatus::file_not_found : ItemStatus::folder_not_found;
}

}  // namespace brindle
