#include "pipeline/rename_plan.h"

#include "platform/integer_text.h"

namespace brindle {
namespace {

constexpr std::int32_t sequence_tab = 0;
constexpr std::int32_t photo_tab = 7;
constexpr std::int32_t list_tab = 9;

bool restarts_in_every_folder(const RenameSettings& settings) {
  return (settings.selectedTab == sequence_tab && settings.isAlphaNumericResetSequenceOnEachFolder) ||
         (settings.selectedTab == photo_tab && settings.isPhotoResetSequenceOnEachFolder);
}

}  // namespace

RenamePlan::RenamePlan(const RenameSettings& settings, Date now) : keeps_loaded_names_(settings.selectedTab == list_tab) {
  add_step(settings, now);
}

RenamePlan::RenamePlan(std::span<const Rule> rules, Date now) : is_chain_(true) {
  for (const Rule& rule : rules) {
    if (rule.isActive && variant_of(rule)) add_step(rule.settings, now);
  }
}

void RenamePlan::add_step(const RenameSettings& settings, Date now) {
  Step step{make_step(settings, now), {}, {}};
  if (std::holds_alternative<std::monostate>(step.operation)) return;
  step.start.number = integer_value(settings.alphaNumericNumericStartWith.value_or(u""));
  step.start.letters = settings.alphaNumericAlphabeticStartWith.value_or(u"");
  step.counter = step.start;
  resets_on_folder_ = resets_on_folder_ || restarts_in_every_folder(settings);
  steps_.push_back(std::move(step));
}

void RenamePlan::reset_counters() {
  photo_number_ = 1;
  for (Step& step : steps_) step.counter = step.start;
}

namespace {

/// Calls the operation of a step.
struct StepRunner {
  FileSystemItem& item;
  WorkingName& name;
  SequenceCounter& counter;
  std::u16string& error;

  void operator()(std::monostate) const {}
  void operator()(const NumericParameters& step) const { renameByNumeric(item, step, counter.number, name, error); }
  void operator()(const AlphabeticParameters& step) const { renameByAlphabetic(item, step, counter.letters, name, error); }
  void operator()(const InsertParameters& step) const { renameByInsert(item, step, name, error); }
  void operator()(const DeleteParameters& step) const { renameByDelete(item, step, name, error); }
  void operator()(const ReplaceRemoveParameters& step) const { renameByReplaceRemove(item, step, name, error); }
  void operator()(const PrefixSuffixParameters& step) const { renameByPrefixSuffix(item, step, name, error); }
  void operator()(const DateTimeParameters& step) const { renameByDateTime(item, step, name, error); }
  void operator()(const GeneralParameters& step) const { renameByGeneral(item, step, name, error); }
  void operator()(const PathComponentsParameters& step) const { renameByPathComponents(item, step, name, error); }
};

}  // namespace

bool RenamePlan::run(FileSystemItem& item, std::u16string& error) {
  for (Step& step : steps_) std::visit(StepRunner{item, working_name_, step.counter, error}, step.operation);
  return error.empty();
}

}  // namespace brindle
