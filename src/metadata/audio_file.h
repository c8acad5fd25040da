#pragma once

// The tags of a song, as its file holds them. What they mean for names is said in metadata/audio_attributes.h.
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

}  // namespace brindle
