#include "methods/insert_delete.h"

#include <algorithm>

#include "text/string_utilities.h"

namespace brindle {

InsertParameters::InsertParameters(const RenameSettings& settings)
    : text_(on_disk(text_of(settings.insertDeleteInsert))), placement_(settings, insert_placement) {}

NameOutcome InsertParameters::make_name(StepRun& run) const {
  return renameByInsert(*this, run.name);
}

NameOutcome renameByInsert(const InsertParameters& parameters, WorkingName& name) {
  return parameters.placement().place(parameters.text(), name);
}

DeleteParameters::DeleteParameters(const RenameSettings& settings)
    : backward(settings.isInsertDeleteDeleteFromBackWard),
      first(integer_of(settings.insertDeleteFromCharacterPosition)),
      count(integer_of(settings.insertDeleteNumberOfCharacters)) {}

NameOutcome DeleteParameters::make_name(StepRun& run) const {
  return renameByDelete(*this, run.name);
}

NameOutcome renameByDelete(const DeleteParameters& parameters, WorkingName& name) {
  const std::u16string_view base = name.base;
  const auto length = static_cast<std::int64_t>(base.size());
  std::int64_t position = parameters.first;
  if (position < 0 || position > length) position = length + 1;
  const std::int64_t count = std::max(parameters.count, 0);
  // Counted from the chosen end: `kept` units stay, and so does everything from `resume` on. Position 0 stands before
  // the first unit, so one unit of its run falls outside the name.
  const std::int64_t kept = count == 0 ? length : std::max<std::int64_t>(position - 1, 0);
  const std::int64_t resume = count == 0 ? length : std::min(position + count - 1, length);
  const std::int64_t front = parameters.backward ? length - resume : kept;
  const std::int64_t back = parameters.backward ? length - kept : resume;
  name.result.append(base.substr(0, static_cast<std::size_t>(front)))
      .append(base.substr(static_cast<std::size_t>(back)));
  return NameOutcome::base;
}

namespace {

std::shared_ptr<const RenameStep> insert_delete_step(const RenameSettings& settings, Date now) {
  if (settings.isInsertDeleteInsert) return step_of<InsertParameters>(settings, now);
  return settings.isInsertDeleteDelete ? step_of<DeleteParameters>(settings, now) : nullptr;
}

std::optional<RuleVariant> chosen_insertion(const RenameSettings& settings) {
  const bool deletes = !settings.isInsertDeleteInsert && settings.isInsertDeleteDelete;
  return deletes ? RuleVariant::delete_characters : RuleVariant::insert;
}

void select_insertion(RenameSettings& settings, RuleVariant variant) {
  settings.isInsertDeleteInsert = variant == RuleVariant::insert;
  settings.isInsertDeleteDelete = variant == RuleVariant::delete_characters;
  settings.insertDeleteIndex = settings.isInsertDeleteDelete ? 1 : 0;
  if (settings.isInsertDeleteInsert) select_flag(settings, insert_placement.flags, settings.*insert_placement.option);
}

void add_insertion_rows(RuleRows& rows, RuleVariant variant) {
  if (variant == RuleVariant::insert) {
    return add_place(rows, insert_placement, text_of(rows.settings.insertDeleteInsert));
  }
  rows.flag("Delete From Backward", &RenameSettings::isInsertDeleteDeleteFromBackWard);
  rows.text("From Character Position", &RenameSettings::insertDeleteFromCharacterPosition);
  rows.text("Number of Characters", &RenameSettings::insertDeleteNumberOfCharacters);
}

constexpr auto insertion_kinds =
    std::to_array<RuleKind>({{RuleVariant::insert, u"Insert"}, {RuleVariant::delete_characters, u"Delete"}});

constexpr auto insertion_requirements = std::to_array<Requirement>({
    {.text = &RenameSettings::insertDeleteInsert,
     .title = "INSERTINVALIDINPUT",
     .message = "ENTERVALIDVALUE",
     .flag = &RenameSettings::isInsertDeleteInsert},
    {insert_placement.before_text, "INSERTTEXTATBEFORETEXT", "ENTERSOMETEXT", insert_placement.option,
     Placement::before_text, &RenameSettings::isInsertDeleteInsert},
    {insert_placement.after_text, "INSERTTEXTATAFTERTEXT", "ENTERSOMETEXT", insert_placement.option,
     Placement::after_text, &RenameSettings::isInsertDeleteInsert},
});

}  // namespace

constexpr MethodRow insert_delete_method = {
    .method = Method::insert_delete,
    .title = "METHODINSERTDELETE",
    .icon = "insert_delete",
    .rule = u"InsertDelete",
    .kinds = insertion_kinds,
    .required = insertion_requirements,
    .step = insert_delete_step,
    .add_rows = add_insertion_rows,
    .chosen = chosen_insertion,
    .select = select_insertion,
};

}  // namespace brindle
