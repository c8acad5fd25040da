#pragma once

// The eight attributes of a song that names are made of.

#include <array>
#include <string>

#include "metadata/audio_file.h"
#include "plist/meta_data_field.h"

namespace brindle {

/// The text that each of audio_tokens stands for, in their order; empty for what the file does not say. As it is to
/// stand in names, but for ":", which parameters may replace.
using AudioAttributes = std::array<std::u16string, audio_tokens.size()>;

/// Makes sense of what was read. Several values stay several, joined by ","; the year and the number are decimal
/// numbers, without what a file may say beyond them; no text has white space at its ends.
AudioAttributes audio_attributes(const AudioFileData& data);

/// Reads a file; one that cannot be read, or is no song, has no attributes, and those that are not wanted may be
/// missing; none is where a wanted one may hold a token. Any thread.
AudioAttributes read_audio_attributes(const std::string& path, AudioTags wanted = all_audio_tags);

}  // namespace brindle
