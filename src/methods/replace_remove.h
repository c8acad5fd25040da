#pragma once

// Replace and Remove: puts one text in place of another in the base of each name, takes a text or a set of characters
// out, or takes out what stands between occurrences of a text. Odd parameters leave the name as it is. Parameters are
// immutable; any number of threads may use them.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/rename_operation.h"
#include "text/character_set.h"
#include "text/search_text.h"

namespace brindle {

/// The arguments as the settings hold them. Texts are as typed: "/" becomes ":".
struct ReplaceRemoveArguments {
  std::u16string_view replaceThis = {};  ///< the text to search for; for type 0 the characters to take out
  std::u16string_view replaceWith = {};  ///< empty for every kind of removal
  bool caseSensitive = false;
  bool removeCharacters = false;  ///< selects replaceRemoveRemoveType; off: replace
  std::int32_t startFromCharacter =
      1;  ///< 1-based; the units before it stay; at or past the end: the whole name is worked on
  std::int32_t startOnOccurrence = 1;  ///< 1-based; with fewer occurrences the name stays
  std::int32_t occurrenceCount = -1;   ///< -1 for all; replace: 0 and below -1 for none
  /// 0 from the start. 1 from the end: the name is worked on read backwards, unit by unit, while the texts are not
  /// turned, so a text matches its mirror image and the replacement ends up mirrored. Anything else leaves the name
  /// reversed.
  std::int32_t replaceRemovePositionDirection = 0;
  /// 0: every character of replaceThis, wherever it stands. With n and k the occurrence and the count, 1: what stands
  /// between occurrences n and n + k; anything else: that and both occurrences. Without a second occurrence, up to the
  /// end.
  std::int32_t replaceRemoveRemoveType = 0;
};

class ReplaceRemoveParameters {
 public:
  explicit ReplaceRemoveParameters(const ReplaceRemoveArguments& arguments);

  /// The work on a part of the name that is turned the way the direction asks for. Appends to `out`.
  void append_worked(std::u16string_view part, std::u16string& out) const;

  std::int32_t start() const { return start_; }
  std::int32_t direction() const { return direction_; }

 private:
  enum class Work { replace, remove_characters, remove_between, remove_around };

  void append_replaced_from_occurrence(std::u16string_view part, std::u16string& out) const;
  void append_between_removed(std::u16string_view part, std::u16string& out) const;

  Work work_;
  SearchText search_;
  CharacterSet characters_;
  std::u16string replacement_;
  std::int32_t start_;
  std::int32_t occurrence_;
  std::int32_t count_;
  std::int32_t direction_;
};

NameOutcome replace_remove(const ReplaceRemoveParameters& parameters, WorkingName& name);

bool renameByReplaceRemove(FileSystemItem& item, const ReplaceRemoveParameters& parameters, WorkingName& name,
                           std::u16string& error);

}  // namespace brindle
