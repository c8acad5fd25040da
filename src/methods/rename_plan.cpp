#include "methods/rename_plan.h"

#include <algorithm>

#include "platform/file_name.h"
#include "text/number_text.h"

namespace brindle {
namespace {

bool restarts_in_every_folder(const RenameSettings& settings) {
  return (settings.selectedTab == sequence_tab && settings.isAlphaNumericResetSequenceOnEachFolder) ||
         (settings.selectedTab == photo_tab && settings.isPhotoResetSequenceOnEachFolder);
}

bool step_reads_files(const RenameStep& step) {
  if (const auto* photo = std::get_if<PhotoParameters>(&step)) return photo->reads_files();
  if (const auto* audio = std::get_if<AudioParameters>(&step)) return audio->reads_files();
  return false;
}

bool takes_part(const RenameStep& step, std::u16string_view extension) {
  if (const auto* photo = std::get_if<PhotoParameters>(&step))
    return photo->reads_files() && photo->takes_part(extension);
  if (const auto* audio = std::get_if<AudioParameters>(&step))
    return audio->reads_files() && audio->takes_part(extension);
  return false;
}

std::u16string extension_of(std::string_view path) {
  return std::u16string(split_extension(decode_file_name(path.substr(path.rfind('/') + 1))).extension);
}

}  // namespace

RenamePlan::RenamePlan(const RenameSettings& settings, Date now)
    : keeps_loaded_names_(settings.selectedTab == rename_from_list_tab) {
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
  reads_files_ = reads_files_ || step_reads_files(step.operation);
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
  std::int32_t& photo_number;
  const AudioAttributes* audio;
  const PhotoMetadata* photo;
  std::u16string& error;

  void operator()(std::monostate) const {}
  void operator()(const NumericParameters& step) const { renameByNumeric(item, step, counter.number, name, error); }
  void operator()(const AlphabeticParameters& step) const {
    renameByAlphabetic(item, step, counter.letters, name, error);
  }
  void operator()(const InsertParameters& step) const { renameByInsert(item, step, name, error); }
  void operator()(const DeleteParameters& step) const { renameByDelete(item, step, name, error); }
  void operator()(const ReplaceRemoveParameters& step) const { renameByReplaceRemove(item, step, name, error); }
  void operator()(const PrefixSuffixParameters& step) const { renameByPrefixSuffix(item, step, name, error); }
  void operator()(const DateTimeParameters& step) const { renameByDateTime(item, step, name, error); }
  void operator()(const GeneralParameters& step) const { renameByGeneral(item, step, name, error); }
  void operator()(const PathComponentsParameters& step) const { renameByPathComponents(item, step, name, error); }
  void operator()(const AudioParameters& step) const { renameByID3Tags(item, step, name, error, audio); }
  void operator()(const PhotoParameters& step) const {
    renameByPhotoEXIFTags(item, step, photo_number, name, error, photo);
  }
};

}  // namespace

bool RenamePlan::run(FileSystemItem& item, std::u16string& error, const ItemMetadata* metadata) {
  const AudioAttributes* audio = metadata != nullptr && metadata->audio ? &*metadata->audio : nullptr;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    const PhotoMetadata* photo = metadata != nullptr ? metadata->photo(i) : nullptr;
    std::visit(StepRunner{item, working_name_, steps_[i].counter, photo_number_, audio, photo, error},
               steps_[i].operation);
  }
  return error.empty();
}

bool RenamePlan::wants_metadata(std::string_view name) const {
  const std::u16string extension = extension_of(name);
  return std::any_of(steps_.begin(), steps_.end(),
                     [&](const Step& step) { return takes_part(step.operation, extension); });
}

ItemMetadata RenamePlan::read_metadata(const std::string& path) const {
  const std::u16string extension = extension_of(path);
  ItemMetadata metadata;
  AudioTags audio_tags = 0;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    const RenameStep& step = steps_[i].operation;
    if (!takes_part(step, extension)) continue;
    metadata.photos.resize(steps_.size());
    if (const auto* photo = std::get_if<PhotoParameters>(&step)) metadata.photos[i] = photo->read(path);
    if (const auto* audio = std::get_if<AudioParameters>(&step)) audio_tags |= audio->wanted();
  }
  if (audio_tags != 0) metadata.audio = read_audio_attributes(path, audio_tags);
  return metadata;
}

}  // namespace brindle
