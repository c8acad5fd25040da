#pragma once

// Audio tags: a name put together from what a song says about itself, by a mask of tokens. Parameters are immutable;
// any number of threads may use them.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "metadata/audio_attributes.h"
#include "methods/rename_operation.h"
#include "text/search_text.h"

namespace brindle {

/// The arguments as the settings hold them. "/" becomes ":" in the mask, the separator and the colon replacement.
struct AudioArguments {
  std::u16string_view id3RenamingMask = {};  ///< empty: no item takes part; the name itself unless there is a separator
  bool isID3RenamingSeperator = false;
  std::u16string_view id3RenamingSeperator = {};  ///< between values; never behind a text of the user's own
  bool isID3RenamingColonReplace = false;         ///< every ":" of a value becomes id3RenamingColonReplace
  std::u16string_view id3RenamingColonReplace = {};
  std::span<const std::u16string> tags =
      {};  ///< the mask's entries, in order: audio_tokens, and "<text>" for other text
  std::span<const std::u16string> allowedExtensions = {};  ///< of the items that take part: ".MP3", upper case
};

class AudioParameters {
 public:
  explicit AudioParameters(const AudioArguments& arguments);

  /// Whether an item whose name has this extension (no dot, any case) gets a name from the mask. All others are left
  /// alone.
  bool takes_part(std::u16string_view extension) const;
  /// Whether names need anything out of the files: then read_audio_attributes is worth doing ahead.
  bool reads_files() const { return wanted_ != 0; }
  /// The attributes that names need.
  AudioTags wanted() const { return wanted_; }

  /// Puts the name together in name.result, which becomes name.base where there is nothing to put together.
  void write_name(const AudioAttributes& attributes, WorkingName& name) const;

 private:
  struct Entry {
    std::optional<std::size_t> token;  ///< which of audio_tokens; none for a text of the user's own
    std::u16string text;               ///< that text
  };

  static Entry entry_of(std::u16string_view tag);
  void want_for_mask();
  void write_separated(const AudioAttributes& attributes, std::u16string& out) const;
  void write_mask(const AudioAttributes& attributes, WorkingName& name) const;
  void append_value(const AudioAttributes& attributes, std::size_t token, std::u16string& out) const;

  std::u16string mask_;
  std::u16string separator_;  // empty for none
  bool replaces_colons_;
  std::u16string colon_replacement_;
  std::vector<Entry> entries_;
  std::array<SearchText, audio_tokens.size()> tokens_;
  std::unordered_set<std::u16string> extensions_;
  AudioTags wanted_ = 0;
};

/// `read` is what read_audio_attributes said of the item's file; null to have it read when it is needed.
NameOutcome audio_name(const AudioParameters& parameters, const FileSystemItem& item, const AudioAttributes* read,
                       WorkingName& name);

bool renameByID3Tags(FileSystemItem& item, const AudioParameters& parameters, WorkingName& name, std::u16string& error,
                     const AudioAttributes* read = nullptr);

}  // namespace brindle
