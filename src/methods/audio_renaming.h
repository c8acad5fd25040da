#pragma once

// Audio tags: a name put together from what a song says about itself, by a mask of tokens.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "metadata/audio_attributes.h"
#include "methods/method_table.h"
#include "text/search_text.h"

namespace brindle {

class AudioParameters final : public RenameStep {
 public:
  explicit AudioParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  /// Whether an item whose name has this extension (no dot, any case) gets a name from the mask. All others are left
  /// alone.
  bool takes_part(std::u16string_view extension) const;
  bool reads(std::u16string_view extension) const override { return reads_files() && takes_part(extension); }
  bool reads_files() const override { return wanted_ != 0; }
  AudioTags wanted_tags() const override { return wanted_; }

  /// Puts the name together in name.result, which becomes name.base where there is nothing to put together.
  void write_name(const AudioAttributes& attributes, WorkingName& name) const;

 private:
  struct Entry {
    std::optional<std::size_t> token;  ///< which of audio_tokens; none for a text of the user's own
    std::u16string text;               ///< that text
  };

  static Entry entry_of(std::u16string_view tag);
  void want_for_mask();
  void write_separated(const AudioAttributes& attributes, WorkingName& name) const;
  void write_mask(const AudioAttributes& attributes, WorkingName& name) const;
  void append_value(const AudioAttributes& attributes, std::size_t token, std::u16string& out) const;

  std::u16string mask_;       // empty: no item takes part; "/" is ":" here and below
  std::u16string separator_;  // between values, never behind a text of the user's own; empty for none
  bool replaces_colons_;
  std::u16string colon_replacement_;
  std::vector<Entry> entries_;
  std::array<SearchText, audio_tokens.size()> tokens_;
  std::unordered_set<std::u16string> extensions_;
  AudioTags wanted_ = 0;
};

/// `read` is what read_audio_attributes said of the item's file; null to have it read when it is needed.
NameOutcome renameByID3Tags(const AudioParameters& parameters, const FileSystemItem& item, const AudioAttributes* read,
                            WorkingName& name);

extern const MethodRow audio_method;

}  // namespace brindle
