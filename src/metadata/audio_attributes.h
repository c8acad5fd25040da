#pragma once

// The tags of a song: as its file holds them, and as the eight attributes that names are made of.
//
// MP3, AAC, MP4 audio, FLAC, Ogg, Opus, WAV, AIFF, WMA, APE, Musepack, WavPack, TTA; most of them told by their
// contents, the others by their extension. A file that is damaged, hostile or no song has no values, or those that
// could be read; it costs a bounded amount of reading (1 MiB of search, 32 MiB of tags, 16 MiB each) and never more
// than that. Any number of threads may read.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "settings/meta_data_field.h"

namespace brindle {

enum class AudioTag : std::uint8_t { artist, year, genre, title, album, comment, track_number, composer };
inline constexpr std::size_t audio_tag_count = 8;

/// The values of one tag, in the order of the file; none where the file says nothing. None is empty, none holds NUL,
/// and each is cut behind 4,096 units. The year is whatever date the file gives, the number may be "3/12".
using AudioTagValues = std::vector<std::u16string>;

/// By AudioTag.
using AudioFileData = std::array<AudioTagValues, audio_tag_count>;

/// A set of tags, one bit each.
using AudioTags = std::uint32_t;
constexpr AudioTags audio_tags(AudioTag tag) {
  return AudioTags{1} << static_cast<unsigned>(tag);
}
inline constexpr AudioTags all_audio_tags = (AudioTags{1} << audio_tag_count) - 1;

/// Reads the file, and of its tags those that are wanted; a symbolic link is followed. Anything but a regular file is
/// not even opened.
AudioFileData read_audio_file(const std::string& path, AudioTags wanted = all_audio_tags);

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
