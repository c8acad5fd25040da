#include "methods/placement.h"

#include "text/string_utilities.h"

namespace brindle {

Placement::Placement(const Arguments& arguments)
    : option_index_(arguments.option_index),
      position_(arguments.position),
      from_end_(arguments.direction == 1),
      before_text_(on_disk(arguments.before_text), true),
      before_occurrence_(arguments.before_occurrence),
      after_text_(on_disk(arguments.after_text), true),
      after_occurrence_(arguments.after_occurrence) {}

NameOutcome Placement::place(std::u16string_view text, WorkingName& name) const {
  switch (option_index_) {
    case at_beginning:
      name.result.append(text).append(name.base);
      break;
    case at_end:
      name.result.append(name.base).append(text);
      break;
    case at_position:
      place_at_position(text, name);
      break;
    case before_text:
      append_inserted(name.base, before_text_, text, before_occurrence_, true, name.result);
      break;
    case after_text:
      append_inserted(name.base, after_text_, text, after_occurrence_, false, name.result);
      break;
    default:
      return NameOutcome::absent;
  }
  return NameOutcome::base;
}

void Placement::place_at_position(std::u16string_view text, WorkingName& name) const {
  // The wide unsigned value of 0 or a negative position is beyond every name.
  const std::uint64_t units = static_cast<std::uint64_t>(std::int64_t{position_} - 1);
  if (units > name.base.size()) {
    name.result.append(name.base);
    return;
  }
  const std::size_t at = from_end_ ? name.base.size() - units : units;
  name.result.append(name.base.substr(0, at)).append(text).append(name.base.substr(at));
}

}  // namespace brindle
