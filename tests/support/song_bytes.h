#pragma once

// Songs without music: the bytes of tags, as other programs write them.

#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle::test {

inline std::string big_endian(std::size_t value, int bytes, int bits = 8) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text.push_back(static_cast<char>((value >> (i * bits)) & ((1U << bits) - 1)));
  return text;
}

inline std::string little_endian(std::size_t value, int bytes) {
  const std::string text = big_endian(value, bytes);
  return {text.rbegin(), text.rend()};
}

// ID3v2: frames of versions 2, 3 and 4, and the tag around them.

inline std::string id3_frame(int version, std::string_view id, std::string_view data, std::string_view flags = {}) {
  std::string frame(id);
  frame += big_endian(data.size(), version == 2 ? 3 : 4, version == 4 ? 7 : 8);
  if (version > 2) frame += flags.empty() ? std::string(2, '\0') : std::string(flags);
  return frame.append(data);
}

/// A text frame in Latin 1 (version 3) or UTF-8 (version 4).
inline std::string text_frame(int version, std::string_view id, std::string_view text) {
  return id3_frame(version, id, std::string(1, version == 4 ? '\3' : '\0') + std::string(text));
}

inline std::string comment_frame(int version, std::string_view description, std::string_view text) {
  const std::string data = std::string(1, '\0') + "eng" + std::string(description) + '\0' + std::string(text);
  return id3_frame(version, version == 2 ? "COM" : "COMM", data);
}

inline std::string id3_tag(int version, std::string_view frames) {
  return std::string("ID3") + static_cast<char>(version) + std::string(2, '\0') + big_endian(frames.size(), 4, 7) +
         std::string(frames);
}

/// ID3v1.1: 128 bytes for the end of a file. Genre 17 is Rock.
inline std::string id3v1_tag(std::string_view title, std::string_view artist, char track) {
  const auto field = [](std::string_view text, std::size_t size) {
    std::string bytes(text);
    bytes.resize(size);
    return bytes;
  };
  return "TAG" + field(title, 30) + field(artist, 30) + field("Album", 30) + "1964" + field("Note", 28) + '\0' + track +
         '\x11';
}

// APE: values, and the tag of them for the end of a file.

inline std::string ape_value(std::string_view key, std::string_view text) {
  return std::string(1, static_cast<char>(text.size())) + std::string(7, '\0') + std::string(key) + '\0' +
         std::string(text);
}

inline std::string ape_tag(std::string_view values, std::size_t count) {
  return std::string(values) + "APETAGEX" + little_endian(2000, 4) + little_endian(values.size() + 32, 4) +
         little_endian(count, 4) + std::string(12, '\0');
}

// MP4: boxes, and a song's list of values.

inline std::string atom(std::string_view type, std::string_view content) {
  return big_endian(content.size() + 8, 4) + std::string(type) + std::string(content);
}

inline std::string mp4_value(std::string_view bytes, char type = 1) {
  return atom("data", std::string(3, '\0') + type + std::string(4, '\0') + std::string(bytes));
}

inline std::string mp4_song(std::string_view list) {
  return atom("ftyp", std::string("M4A \0\0\0\0", 8)) + atom("mdat", std::string(5000, 'm')) +
         atom("moov", atom("udta", atom("meta", std::string(4, '\0') + atom("ilst", list))));
}

/// Frames of MPEG audio, layer 3: 128 kbit/s, 44.1 kHz, silent.
inline std::string mp3_frames(int count) {
  std::string frames;
  for (int i = 0; i < count; ++i) frames += "\xFF\xFB\x90\x44" + std::string(413, '\0');
  return frames;
}

inline std::string write_file(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

}  // namespace brindle::test
