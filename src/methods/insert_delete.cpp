#include "methods/insert_delete.h"

#include <algorithm>

#include "text/string_utilities.h"

namespace brindle {
namespace {

Placement insert_placement(const InsertArguments& arguments) {
  return Placement({.option_index = arguments.insertOptionIndex,
                    .position = arguments.atCharacterPositions,
                    .direction = arguments.atPostionDirection,
                    .before_text = arguments.atBeforeText,
                    .before_occurrence = arguments.atBeforeOccurrence,
                    .after_text = arguments.atAfterText,
                    .after_occurrence = arguments.atAfterOccurrence});
}

}  // namespace

InsertParameters::InsertParameters(const InsertArguments& arguments)
    : text_(on_disk(arguments.insertText)), placement_(insert_placement(arguments)) {}

NameOutcome insert_text(const InsertParameters& parameters, WorkingName& name) {
  return parameters.placement().place(parameters.text(), name);
}

bool renameByInsert(FileSystemItem& item, const InsertParameters& parameters, WorkingName& name,
                    std::u16string& error) {
  return rename_operation(item, name, error, [&](WorkingName& working) { return insert_text(parameters, working); });
}

NameOutcome delete_characters(const DeleteParameters& parameters, WorkingName& name) {
  const std::u16string_view base = name.base;
  const auto length = static_cast<std::int64_t>(base.size());
  std::int64_t position = parameters.fromCharacterPosition;
  if (position < 0 || position > length) position = length + 1;
  const std::int64_t count = std::max(parameters.numberOfCharacters, 0);
  // Counted from the chosen end: `kept` units stay, and so does everything from `resume` on. Position 0 stands before
  // the first unit, so one unit of its run falls outside the name.
  const std::int64_t kept = count == 0 ? length : std::max<std::int64_t>(position - 1, 0);
  const std::int64_t resume = count == 0 ? length : std::min(position + count - 1, length);
  const std::int64_t front = parameters.deleteFromBackward ? length - resume : kept;
  const std::int64_t back = parameters.deleteFromBackward ? length - kept : resume;
  name.result.append(base.substr(0, static_cast<std::size_t>(front)))
      .append(base.substr(static_cast<std::size_t>(back)));
  return NameOutcome::base;
}

bool renameByDelete(FileSystemItem& item, const DeleteParameters& parameters, WorkingName& name,
                    std::u16string& error) {
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return delete_characters(parameters, working); });
}

}  // namespace brindle
