#include "methods/replace_remove.h"

#include <algorithm>

#include "text/string_utilities.h"

namespace brindle {

ReplaceRemoveParameters::ReplaceRemoveParameters(const RenameSettings& settings)
    : work_(settings.isReplaceRemoveReplace || !settings.isReplaceRemoveRemoveCharacters ? Work::replace
            : settings.replaceRemoveRemoveType == 0                                      ? Work::remove_characters
            : settings.replaceRemoveRemoveType == 1                                      ? Work::remove_between
                                                                                         : Work::remove_around),
      replacement_(settings.isReplaceRemoveReplace ? on_disk(text_of(settings.replaceRemoveWith)) : std::u16string()),
      start_(integer_of(settings.replaceRemoveStartFromCharacter)),
      direction_(settings.replaceRemovePositionDirection) {
  const bool all =
      settings.isReplaceRemoveAllOccurrence && (settings.isReplaceRemoveReplace || settings.isReplaceRemoveRemove);
  occurrence_ = all ? 1 : integer_of(settings.replaceRemoveStartOnOccurrence);
  count_ = all ? -1 : integer_of(settings.replaceRemoveOccuranceCount);
  const std::u16string searched = on_disk(text_of(settings.replaceRemoveThis));
  if (work_ == Work::remove_characters) {
    characters_ = CharacterSet(searched, settings.isReplaceRemoveCaseSensitive);
  } else {
    search_ = SearchText(searched, settings.isReplaceRemoveCaseSensitive);
  }
}

NameOutcome ReplaceRemoveParameters::make_name(StepRun& run) const {
  return renameByReplaceRemove(*this, run.name);
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

NameOutcome renameByReplaceRemove(const ReplaceRemoveParameters& parameters, WorkingName& name) {
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

namespace {

std::shared_ptr<const RenameStep> replace_remove_step(const RenameSettings& settings, Date now) {
  const bool removes = settings.isReplaceRemoveRemove || settings.isReplaceRemoveRemoveCharacters;
  if (!settings.isReplaceRemoveReplace && !removes) return nullptr;
  return step_of<ReplaceRemoveParameters>(settings, now);
}

std::optional<RuleVariant> chosen_replacement(const RenameSettings& settings) {
  if (settings.isReplaceRemoveReplace) return RuleVariant::replace;
  if (!settings.isReplaceRemoveRemove && !settings.isReplaceRemoveRemoveCharacters) return std::nullopt;
  return settings.isReplaceRemoveRemoveCharacters && settings.isReplaceRemoveAllOccurrence
             ? RuleVariant::remove_characters
             : RuleVariant::remove;
}

// Whether characters go is itself a carried key of one variant, and off for the others. A rule of that variant that
// says no to it is a plain removal.
void select_replacement(RenameSettings& settings, RuleVariant variant) {
  if (variant != RuleVariant::remove_characters) settings.isReplaceRemoveRemoveCharacters = false;
  settings.isReplaceRemoveReplace = variant == RuleVariant::replace;
  settings.isReplaceRemoveRemove = !settings.isReplaceRemoveReplace && !settings.isReplaceRemoveRemoveCharacters;
  settings.removeReplaceIndex = variant == RuleVariant::replace ? 0 : variant == RuleVariant::remove ? 1 : 2;
}

std::string_view remove_type(std::int32_t type) {
  if (type == 0) return "Each of the characters";
  return type == 1 ? "Between occurrences" : "Between occurrences, with them";
}

void add_replacement_rows(RuleRows& rows, RuleVariant variant) {
  const RenameSettings& s = rows.settings;
  const bool characters = s.isReplaceRemoveRemoveCharacters;
  rows.text("THIS", &RenameSettings::replaceRemoveThis);
  if (variant == RuleVariant::replace) rows.text("WITH", &RenameSettings::replaceRemoveWith);
  if (characters) rows.word("Remove Type", remove_type(s.replaceRemoveRemoveType));
  rows.flag("Case Sensitive", &RenameSettings::isReplaceRemoveCaseSensitive);
  rows.word("Start From", s.replaceRemovePositionDirection == 1 ? "End of the filename" : "Beginning of the filename");
  if (!characters) rows.flag("All Occurrence", &RenameSettings::isReplaceRemoveAllOccurrence);
  rows.text("Start From Character", &RenameSettings::replaceRemoveStartFromCharacter);
  if (s.isReplaceRemoveAllOccurrence && !characters) return;
  rows.text("Start On Occurrence", &RenameSettings::replaceRemoveStartOnOccurrence);
  rows.text("Occurrence Count", &RenameSettings::replaceRemoveOccuranceCount);
}

constexpr auto replacement_kinds = std::to_array<RuleKind>({{RuleVariant::replace, u"Replace"},
                                                            {RuleVariant::remove, u"Remove"},
                                                            {RuleVariant::remove_characters, u"Remove Characters"}});

constexpr auto absent_replacement_options = std::to_array<AbsentOption>({{&RenameSettings::replaceRemoveWith}});

constexpr auto replacement_requirements =
    std::to_array<Requirement>({{&RenameSettings::replaceRemoveThis, "REPLACEREMOVEINVALIDINPUT", "ENTERVALIDVALUE"}});

}  // namespace

constexpr MethodRow replace_remove_method = {
    .method = Method::replace_remove,
    .title = "METHODREPLACEREMOVE",
    .icon = "replace_remove",
    .rule = u"ReplaceRemove",
    .kinds = replacement_kinds,
    .absent = absent_replacement_options,
    .required = replacement_requirements,
    .step = replace_remove_step,
    .add_rows = add_replacement_rows,
    .chosen = chosen_replacement,
    .select = select_replacement,
};

}  // namespace brindle
