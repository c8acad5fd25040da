#include "methods/replace_remove.h"

#include <algorithm>

#include "text/string_utilities.h"

namespace brindle {

ReplaceRemoveParameters::ReplaceRemoveParameters(const ReplaceRemoveArguments& arguments)
    : work_(!arguments.removeCharacters              ? Work::replace
            : arguments.replaceRemoveRemoveType == 0 ? Work::remove_characters
            : arguments.replaceRemoveRemoveType == 1 ? Work::remove_between
                                                     : Work::remove_around),
      replacement_(on_disk(arguments.replaceWith)),
      start_(arguments.startFromCharacter),
      occurrence_(arguments.startOnOccurrence),
      count_(arguments.occurrenceCount),
      direction_(arguments.replaceRemovePositionDirection) {
  const std::u16string searched = on_disk(arguments.replaceThis);
  if (work_ == Work::remove_characters) {
    characters_ = CharacterSet(searched, arguments.caseSensitive);
  } else {
    search_ = SearchText(searched, arguments.caseSensitive);
  }
}

void ReplaceRemoveParameters::append_replaced_from_occurrence(std::u16string_view part, std::u16string& out) const {
  const std::size_t position = occurrence_ > 1 ? findLocationInString(part, search_, occurrence_) : 1;
  if (position == 0) {
    out.append(part);
    return;
  }
  out.append(part.substr(0, position - 1));
  append_replaced(part, search_, replacement_, static_cast<std::int64_t>(position), count_, out);
}

void ReplaceRemoveParameters::append_between_removed(std::u16string_view part, std::u16string& out) const {
  const std::size_t first = search_.find_nth(part, occurrence_);
  if (first == SearchText::npos) {
    out.append(part);
    return;
  }
  const bool keep_both = work_ == Work::remove_between;
  out.append(part.substr(0, keep_both ? first + search_.size() : first));
  // A count of 0 or below resumes at or before the first occurrence: what stands there is then written twice.
  const std::size_t last = search_.find_nth(part, std::int64_t{occurrence_} + count_);
  if (last != SearchText::npos) out.append(part.substr(keep_both ? last : last + search_.size()));
}

void ReplaceRemoveParameters::append_worked(std::u16string_view part, std::u16string& out) const {
  switch (work_) {
    case Work::replace:
      return append_replaced_from_occurrence(part, out);
    case Work::remove_characters:
      return characters_.append_without(part, direction_ != 0, out);
    case Work::remove_between:
    case Work::remove_around:
      return append_between_removed(part, out);
  }
}

NameOutcome replace_remove(const ReplaceRemoveParameters& parameters, WorkingName& name) {
  std::u16string_view oriented = name.base;
  if (parameters.direction() != 0) {
    name.scratch.clear();
    append_reversed(name.base, name.scratch);
    oriented = name.scratch;
  }
  const std::int32_t start = parameters.start();
  const bool has_lead = start > 1 && static_cast<std::size_t>(start) < oriented.size();
  const std::size_t lead = has_lead ? static_cast<std::size_t>(start) - 1 : 0;
  name.result.append(oriented.substr(0, lead));
  parameters.append_worked(oriented.substr(lead), name.result);
  if (parameters.direction() == 1) std::reverse(name.result.begin(), name.result.end());
  return NameOutcome::base;
}

bool renameByReplaceRemove(FileSystemItem& item, const ReplaceRemoveParameters& parameters, WorkingName& name,
                           std::u16string& error) {
  return rename_operation(item, name, error, [&](WorkingName& working) { return replace_remove(parameters, working); });
}

}  // namespace brindle
