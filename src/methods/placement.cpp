#include "methods/placement.h"

#include "text/string_utilities.h"

namespace brindle {

Placement::Placement(const RenameSettings& settings, const PlacementMembers& members)
    : option_index_(settings.*members.option),
      position_(integer_of(settings.*members.position)),
      from_end_(settings.*members.direction == 1),
      before_text_(on_disk(text_of(settings.*members.before_text)), true),
      before_occurrence_(integer_of(settings.*members.before_occurrence)),
      after_text_(on_disk(text_of(settings.*members.after_text)), true),
      after_occurrence_(integer_of(settings.*members.after_occurrence)) {}

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

void add_place(RuleRows& rows, const PlacementMembers& members, std::optional<std::u16string_view> text) {
  const RenameSettings& s = rows.settings;
  const auto add = [&](std::string_view label) { text ? rows.text(label, *text) : rows.word(label, "TRUE"); };
  const auto add_search = [&](Text RenameSettings::*searched, Text RenameSettings::*occurrence) {
    rows.text("Text To Search", searched);
    rows.text("On Occurrence", occurrence);
  };
  switch (s.*members.option) {
    case Placement::at_beginning:
      return add("Insert At Beginning");
    case Placement::at_end:
      return add("Insert At End");
    case Placement::at_position:
      add("Insert At Position");
      rows.text("At Character Positions", members.position);
      return rows.word("Insert From", s.*members.direction == 1 ? "END" : "START");
    case Placement::before_text:
      add("Insert At Before Text");
      return add_search(members.before_text, members.before_occurrence);
    case Placement::after_text:
      add("Insert At After Text");
      return add_search(members.after_text, members.after_occurrence);
    default:
      return;
  }
}

}  // namespace brindle
