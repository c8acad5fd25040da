#include "methods/rename_plan.h"

#include <algorithm>

#include "methods/method_table.h"
#include "methods/sequence.h"
#include "platform/file_name.h"
#include "text/number_text.h"

namespace brindle {
namespace {

std::u16string extension_of(std::string_view path) {
  return std::u16string(split_extension(decode_file_name(path.substr(path.rfind('/') + 1))).extension);
}

}  // namespace

RenamePlan::RenamePlan(const RenameSettings& settings, Date now)
    : keeps_loaded_names_(selected_method(settings) == Method::from_list) {
  add_step(settings, now);
}

RenamePlan::RenamePlan(std::span<const Rule> rules, Date now) : is_chain_(true) {
  for (const Rule& rule : rules) {
    if (rule.isActive && variant_of(rule)) add_step(rule.settings, now);
  }
}

void RenamePlan::add_step(const RenameSettings& settings, Date now) {
  const std::optional<Method> method = selected_method(settings);
  if (!method || method_row(*method).step == nullptr) return;
  const MethodRow& row = method_row(*method);
  std::shared_ptr<const RenameStep> step = row.step(settings, now);
  if (step == nullptr) return;
  if (row.restarts_in_folder != nullptr && settings.*row.restarts_in_folder) resets_on_folder_ = true;
  if (step->reads_files()) reads_files_ = true;
  const SequenceCounter start = counter_start(settings);
  steps_.push_back({std::move(step), start, start});
}

void RenamePlan::reset_counters() {
  photo_number_ = 1;
  for (Step& step : steps_) step.counter = step.start;
}

bool RenamePlan::run(FileSystemItem& item, std::u16string& error, const ItemMetadata* metadata) {
  working_name_.remark = Warning::none;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    StepRun run{item, working_name_, steps_[i].counter, photo_number_};
    if (metadata != nullptr && metadata->audio) run.audio = &*metadata->audio;
    if (metadata != nullptr && i < metadata->photos.size() && metadata->photos[i]) run.photo = &*metadata->photos[i];
    run_step(*steps_[i].operation, run, error);
  }
  return error.empty();
}

bool RenamePlan::may_change_extensions() const {
  return std::ranges::any_of(steps_, [](const Step& step) { return step.operation->is_about_extensions(); });
}

bool RenamePlan::wants_metadata(std::string_view name) const {
  const std::u16string extension = extension_of(name);
  return std::ranges::any_of(steps_, [&](const Step& step) { return step.operation->reads(extension); });
}

ItemMetadata RenamePlan::read_metadata(const std::string& path) const {
  const std::u16string extension = extension_of(path);
  ItemMetadata metadata;
  AudioTags wanted_tags = 0;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    const RenameStep& step = *steps_[i].operation;
    if (!step.reads(extension)) continue;
    metadata.photos.resize(steps_.size());
    metadata.photos[i] = step.read_photo(path);
    wanted_tags |= step.wanted_tags();
  }
  if (wanted_tags != 0) metadata.audio = read_audio_attributes(path, wanted_tags);
  return metadata;
}

MetadataWindow::MetadataWindow(const FileList& files, const RenamePlan& plan) : files_(files), plan_(plan) {
  if (!plan.reads_files()) return;
  ahead_ = std::make_unique<MetadataAhead<ItemMetadata>>(
      [&plan](const std::string& path) { return plan.read_metadata(path); });
}

// Rows that no step takes part with are passed over: their files are not opened.
void MetadataWindow::announce() {
  for (; next_ < files_.size() && ahead_->has_room(); ++next_) {
    if (plan_.wants_metadata(files_[next_].name())) ahead_->expect(next_, files_.path(next_));
  }
}

std::optional<ItemMetadata> MetadataWindow::take(std::size_t row) {
  if (ahead_ == nullptr) return std::nullopt;
  announce();
  return ahead_->take(row);
}

}  // namespace brindle
