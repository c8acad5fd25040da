#pragma once

// A tab's settings, or a chain of rules, made ready to run over many items: everything that can be done once a run is
// done when the plan is made. Running an item is a loop over the steps.
//
// A plan belongs to one thread at a time (its counters move).

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "list/file_system_item.h"
#include "methods/audio_renaming.h"
#include "methods/date_time.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/item_metadata.h"
#include "methods/path_components.h"
#include "methods/photo_renaming.h"
#include "methods/prefix_suffix.h"
#include "methods/rename_operation.h"
#include "methods/replace_remove.h"
#include "methods/sequence.h"
#include "settings/rename_settings.h"
#include "settings/rule.h"

namespace brindle {

/// One operation with its arguments made ready. std::monostate leaves every item alone.
using RenameStep = std::variant<std::monostate, NumericParameters, AlphabeticParameters, InsertParameters,
                                DeleteParameters, ReplaceRemoveParameters, PrefixSuffixParameters, DateTimeParameters,
                                GeneralParameters, PathComponentsParameters, AudioParameters, PhotoParameters>;

/// The step of a settings record's selected tab: one row a tab decides which operation runs. std::monostate for a tab
/// without a chosen variant, for the list tab, and for any tab outside 0…9. `now` is the start of the run: what "the
/// current date" means in every name of it.
RenameStep make_step(const RenameSettings& settings, Date now);

/// The running counter of a sequence step: a number or letters, whichever the step counts in.
struct SequenceCounter {
  std::int32_t number = 0;
  std::u16string letters;
};

class RenamePlan {
 public:
  /// The method of the selected tab. The settings are expected to be validated and normalised (settings/validation.h).
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

  // Reading ahead. These may be called on another thread while the plan runs.

  /// Whether any step reads files.
  bool reads_files() const { return reads_files_; }
  /// Whether a step reads the file of an item of this name (bytes).
  bool wants_metadata(std::string_view name) const;
  ItemMetadata read_metadata(const std::string& path) const;

 private:
  struct Step {
    RenameStep operation;
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

}  // namespace brindle
