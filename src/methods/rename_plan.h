#pragma once

// A tab's settings, or a chain of rules, made ready to run over many items. Running an item is a loop over the steps.
//
// A plan belongs to one thread at a time (its counters move).

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "list/file_list.h"
#include "metadata/metadata_ahead.h"
#include "methods/rename_operation.h"
#include "methods/rule.h"
#include "settings/rename_settings.h"

namespace brindle {

/// The metadata of one item for one run of a plan's steps.
struct ItemMetadata {
  /// By step; none for steps of other kinds, and for what was not read.
  std::vector<std::optional<PhotoMetadata>> photos;
  std::optional<AudioAttributes> audio;
};

class RenamePlan {
 public:
  /// The method of the selected tab; `now` is the start of the run, what "the current date" means in every name of it.
  /// The settings are expected to be validated and normalised (validation.h).
  RenamePlan(const RenameSettings& settings, Date now);
  /// The active rules, in list order.
  RenamePlan(std::span<const Rule> rules, Date now);

  bool is_chain() const { return is_chain_; }
  /// The new names are in the items already (rename from list): they are kept, and no operation runs.
  bool keeps_loaded_names() const { return keeps_loaded_names_; }
  /// Counters start anew in every folder; the list is sorted by folder first.
  bool resets_on_folder() const { return resets_on_folder_; }
  /// There is no operation to run at all.
  bool empty() const { return steps_.empty(); }

  /// Puts all counters back to their start: at the start of a run, and at each new folder where the plan asks for it.
  void reset_counters();

  /// Runs every step on the item, each on the name the one before made. True when `error` is still empty. `metadata` is
  /// what read_metadata said of the item's file; null to have the steps read what they need.
  bool run(FileSystemItem& item, std::u16string& error, const ItemMetadata* metadata = nullptr);
  /// What the steps found worth a second look in the last item.
  Warning remark() const { return working_name_.remark; }
  /// Some step is about extensions.
  bool may_change_extensions() const;

  // Reading ahead. These may be called on another thread while the plan runs.

  /// Whether any step reads files.
  bool reads_files() const { return reads_files_; }
  /// Whether a step reads the file of an item of this name (bytes).
  bool wants_metadata(std::string_view name) const;
  ItemMetadata read_metadata(const std::string& path) const;

 private:
  struct Step {
    std::shared_ptr<const RenameStep> operation;
    SequenceCounter start;
    SequenceCounter counter;
  };

  void add_step(const RenameSettings& settings, Date now);

  std::vector<Step> steps_;
  WorkingName working_name_;
  std::int32_t photo_number_ = 1;
  bool is_chain_ = false;
  bool keeps_loaded_names_ = false;
  bool resets_on_folder_ = false;
  bool reads_files_ = false;
};

/// Hands out the metadata of rows that are asked for in rising order, read ahead of the row at hand on another core.
/// Which values come out does not depend on that. One thread; the list and the plan must outlive it, and the names on
/// the list must not change while it is used.
class MetadataWindow {
 public:
  /// Does nothing at all for a plan whose steps read no files.
  MetadataWindow(const FileList& files, const RenamePlan& plan);

  /// None when nothing was read ahead: the steps then read what they need themselves.
  std::optional<ItemMetadata> take(std::size_t row);

 private:
  void announce();

  const FileList& files_;
  const RenamePlan& plan_;
  std::size_t next_ = 0;  // the first row not announced
  std::unique_ptr<MetadataAhead<ItemMetadata>> ahead_;
};

}  // namespace brindle
