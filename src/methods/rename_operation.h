#pragma once

// The contract that every rename operation keeps, in one place: what a step of a plan is, and what runs it.
//
// An operation works on the base of the working name: of "newFilename" when an earlier rule of a chain (or a list) has
// put a name there, else of the name on disk. The result is stored in "newFilename" with the extension put back.
// Whatever goes wrong while the name is being built ends up in `error`; the field then keeps what it held.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "list/file_system_item.h"
#include "list/item_remark.h"
#include "metadata/audio_attributes.h"
#include "metadata/image_properties.h"
#include "metadata/xmp_text.h"

namespace brindle {

/// The working name of an item and the buffers for the next one. One object serves a whole run of one thread.
struct WorkingName {
  std::u16string_view base;        ///< views into the item
  std::u16string_view extension;   ///< without the dot; empty for none
  std::u16string result;           ///< the new base, and in the end the whole name
  std::u16string scratch;          ///< for the text function's own use; holds anything on entry
  Warning remark = Warning::none;  ///< what a person should look at twice: the most urgent that a step found

  void note(Warning found) {
    if (remark == Warning::none || found < remark) remark = found;
  }
};

/// What a text function made of the base.
enum class NameOutcome {
  base,    ///< `result` holds the new base; the extension is to be put back
  whole,   ///< `result` holds the whole name, extension included
  absent,  ///< no name at all: the field becomes empty, and no error is reported
};

/// The running counter of a sequence: a number or letters, whichever it counts in.
struct SequenceCounter {
  std::int32_t number = 0;
  std::u16string letters;
};

/// What a photo step needs to know of one file.
struct PhotoMetadata {
  ImageProperties image;
  XmpTexts xmp;
};

/// What a step works with: the item, and what goes on from item to item.
struct StepRun {
  FileSystemItem& item;
  WorkingName& name;
  SequenceCounter& counter;                ///< the step's own
  std::int32_t& photo_number;              ///< one for all steps of a plan
  const AudioAttributes* audio = nullptr;  ///< of the item's file, when it was read ahead; else the step reads
  const PhotoMetadata* photo = nullptr;
};

/// A method with its options made ready: everything that can be done once a run is done when the step is made.
/// Immutable; any number of threads may use one.
class RenameStep {
 public:
  RenameStep() = default;
  RenameStep(const RenameStep&) = default;
  RenameStep& operator=(const RenameStep&) = default;
  virtual ~RenameStep() = default;

  /// Reads name.base and name.extension and writes name.result, which is empty on entry. What goes wrong is thrown, as
  /// a std::exception.
  virtual NameOutcome make_name(StepRun& run) const = 0;

  /// Whether extensions are what it is about: a change of one is no surprise then.
  virtual bool is_about_extensions() const { return false; }

  // Reading ahead, for steps that read files.

  /// Whether the file of an item with this extension (no dot, any case) is read.
  virtual bool reads(std::u16string_view /*extension*/) const { return false; }
  virtual bool reads_files() const { return false; }
  /// The attributes of a song that names need.
  virtual AudioTags wanted_tags() const { return 0; }
  /// What names need of a picture; none for other steps. Never fails: an unreadable file has no values.
  virtual std::optional<PhotoMetadata> read_photo(const std::string& /*path*/) const { return std::nullopt; }
};

/// The localised text of "UNABLETOGENERATENEWFILENAMEERROR", with "%@" where the reason goes; English until it is set.
/// To be set while no operation runs.
void set_failure_format(std::u16string_view format);

/// Makes a name by the step and stores it as the item's new name. True exactly when `error` is empty at the end; it is
/// filled with the failure text and the reason, and never cleared here.
bool run_step(const RenameStep& step, StepRun& run, std::u16string& error);

}  // namespace brindle
