#include <array>

#include "pipeline/rename_plan.h"

// From settings to operations: which operation a tab runs, and where each of its arguments comes from.

namespace brindle {
namespace {

std::u16string_view text(const Text& text) { return text ? std::u16string_view(*text) : std::u16string_view(); }
std::int32_t number(const Text& value) { return integer_value(text(value)); }

RenameStep insert_delete_step(const RenameSettings& s, Date) {
  if (s.isInsertDeleteInsert) {
    return InsertParameters(InsertArguments{
        .insertText = text(s.insertDeleteInsert),
        .insertOptionIndex = s.insertDeleteInsertOptionIndex,
        .atCharacterPositions = number(s.insertDeleteAtCharacterPositions),
        .atPostionDirection = s.insertDeleteInsertAtPostionDirection,
        .atBeforeText = text(s.insertDeleteInsertAtBeforeText),
        .atBeforeOccurrence = number(s.insertDeleteInsertAtBeforeOccurrence),
        .atAfterText = text(s.insertDeleteInsertAtAfterText),
        .atAfterOccurrence = number(s.insertDeleteInsertAtAfterOccurrence),
    });
  }
  if (!s.isInsertDeleteDelete) return {};
  return DeleteParameters{
      .deleteFromBackward = s.isInsertDeleteDeleteFromBackWard,
      .fromCharacterPosition = number(s.insertDeleteFromCharacterPosition),
      .numberOfCharacters = number(s.insertDeleteNumberOfCharacters),
  };
}

RenameStep no_step(const RenameSettings&, Date) { return {}; }

using StepMaker = RenameStep (*)(const RenameSettings&, Date);

// By selectedTab.
constexpr std::array<StepMaker, 10> step_makers = {
    no_step, insert_delete_step, no_step, no_step, no_step, no_step, no_step, no_step, no_step, no_step,
};

}  // namespace

RenameStep make_step(const RenameSettings& settings, Date now) {
  const auto tab = static_cast<std::uint32_t>(settings.selectedTab);
  return tab < step_makers.size() ? step_makers[tab](settings, now) : RenameStep();
}

}  // namespace brindle
