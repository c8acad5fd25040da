#pragma once

// Replace and Remove: puts one text in place of another in the base of each name, takes a text or a set of characters
// out, or takes out what stands between occurrences of a text. Odd options leave the name as it is.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/method_table.h"
#include "text/search_text.h"

namespace brindle {

class ReplaceRemoveParameters final : public RenameStep {
 public:
  /// A removal by characters counts its occurrences even when all are asked for.
  explicit ReplaceRemoveParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  /// The work on a part of the name that is turned the way the direction asks for. Appends to `out`.
  void append_worked(std::u16string_view part, std::u16string& out) const;

  std::int32_t start() const { return start_; }
  std::int32_t direction() const { return direction_; }

 private:
  enum class Work { replace, remove_characters, remove_between, remove_around };

  void append_replaced_from_occurrence(std::u16string_view part, std::u16string& out) const;
  void append_between_removed(std::u16string_view part, std::u16string& out) const;

  Work work_;
  SearchText search_;        // "/" is ":" in the texts
  CharacterSet characters_;  // taken out wherever they stand
  std::u16string replacement_;
  std::int32_t start_;       // 1-based; the units before it stay; at or past the end the whole name is worked on
  std::int32_t occurrence_;  // 1-based; with fewer occurrences the name stays
  // -1 for all; replace: 0 and below -1 for none. Between: the second text is so many occurrences behind the first;
  // without one, the removal goes to the end.
  std::int32_t count_;
  // 0 from the start. 1 from the end: the name is worked on read backwards, unit by unit, while the texts are not
  // turned, so a text matches its mirror image and the replacement ends up mirrored. Anything else leaves the name
  // reversed.
  std::int32_t direction_;
};

NameOutcome renameByReplaceRemove(const ReplaceRemoveParameters& parameters, WorkingName& name);

extern const MethodRow replace_remove_method;

}  // namespace brindle
