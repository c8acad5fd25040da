
#include <zlib.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t packed_limit = ByteSource::piece_limit;
constexpr int chunk_limit = 100'000;
constexpr std::string_view exif_mark = "Exif\0\0"sv;

/// The text up to a NUL, taken off the front with it.
std::string_view take_text(std::string_view& bytes) {
  const std::string_view text = bytes.substr(0, bytes.find('\0'));
  bytes.remove_prefix(std::min(text.size() + 1, bytes.size()));
  return text;
}

std::string unpacked(std::string_view packed) {
  z_stream stream{};
  if (::inflateInit(&stream) != Z_OK) return {};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));  // NOLINT: it only reads
  stream.avail_in = static_cast<uInt>(packed.size());
  std::string text;
  int state = Z_OK;
  while (state == Z_OK && text.size() < packed_limit) {
    const std::size_t before = text.size();
    text.resize(std::min(packed_limit, std::max<std::size_t>(2 * before, 4096)));
    stream.next_out = reinterpret_cast<Bytef*>(text.data() + before);
    stream.avail_out = static_cast<uInt>(text.size() - before);
    state = ::inflate(&stream, Z_NO_FLUSH);
    text.resize(text.size() - stream.avail_out);
  }
  ::inflateEnd(&stream);
  return state == Z_STREAM_END ? text : std::string();
}

int hex_value(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// "\nexif\n   1234\n" and then the bytes as hexadecimal digits in lines.
std::string raw_profile(std::string_view text) {
  for (int line = 0; line < 3; ++line) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
  std::string bytes;
  int high = -1;
  for (const char digit : text) {
    const int value = hex_value(digit);
    if (value < 0) continue;
    if (high >= 0) bytes.push_back(static_cast<char>(high * 16 + value));
    high = high >= 0 ? -1 : value;
  }
  return bytes;
}

enum class TextKind : std::uint8_t { none, xmp, exif, iptc };
constexpr std::size_t text_kind_count = 4;

TextKind kind_of(std::string_view name) {
  constexpr std::string_view profile = "Raw profile type ";
  if (name == "XML:com.adobe.xmp") return TextKind::xmp;
  if (!name.starts_with(profile)) return TextKind::none;
  name.remove_prefix(profile.size());
  if (name == "exif" || name == "APP1") return TextKind::exif;
  return name == "iptc" ? TextKind::iptc : name == "xmp" ? TextKind::xmp : TextKind::none;
}

class ChunkWalk {
 public:
  ChunkWalk(ByteSource& source, MetadataBlocks& blocks) : source_(source), found_(blocks) {}

  void run() {
    std::uint64_t at = 8;
    for (int i = 0; i < chunk_limit && at < source_.size(); ++i) {
      const std::string_view head = source_.at(at, 8);
      if (head.size() < 8) return;
      const std::uint64_t size = number_of_bytes(head.substr(0, 4), true);
      const std::string type(head.substr(4));
      if (type == "IEND" || size > source_.size() - at) return;
      take(type, {at + 8, size});
      at += 8 + size + 4;
    }
  }

 private:
  void take(std::string_view type, BlockPlace content) {
    if (type == "IHDR") {
      found_.width = static_cast<std::uint32_t>(source_.number(content.start, 4));
      found_.height = static_cast<std::uint32_t>(source_.number(content.start + 4, 4));
    } else if (type == "eXIf") {
      read_tiff_notes(source_, content, found_.notes);
    } else if (type == "tEXt" || type == "zTXt" || type == "iTXt") {
      take_text_chunk(type, content);
    }
  }

  // The name, then (in two of the three kinds) how the text is packed, then (in one) its language. The first of each
  // kind counts: unpacking them all is what a hostile file wants.
  void take_text_chunk(std::string_view type, BlockPlace place) {
    constexpr std::size_t longest_name = 80;
    std::string_view start = source_.at(place.start, std::min<std::size_t>(longest_name, place.size));
    const TextKind kind = kind_of(take_text(start));
    if (kind == TextKind::none || std::exchange(is_taken_[static_cast<std::size_t>(kind)], true)) return;
    const std::string whole = source_.copy(place.start, place.size);
    std::string_view content = whole;
    take_text(content);
    const bool is_packed = type == "zTXt" || (type == "iTXt" && content.starts_with('\1'));
    const std::size_t flags = type == "iTXt" ? 2 : type == "zTXt" ? 1 : 0;
    content.remove_prefix(std::min(flags, content.size()));
    for (int i = 0; i < 2 && type == "iTXt"; ++i) take_text(content);
    take_value(kind, type == "iTXt", is_packed ? unpacked(content) : std::string(content));
  }

  void take_value(TextKind kind, bool is_plain, const std::string& text) {
    const std::string bytes = is_plain ? text : raw_profile(text);
    if (kind == TextKind::xmp) found_.xmp = bytes;
    if (kind == TextKind::iptc) (bytes.starts_with("8BIM") ? found_.photoshop : found_.iptc) = bytes;
    if (kind != TextKind::exif) return;
    const std::size_t start = bytes.starts_with(exif_mark) ? exif_mark.size() : 0;
    read_tiff_notes(std::string_view(bytes).substr(start), found_.notes);
  }

  ByteSource& source_;
  MetadataBlocks& found_;
  std::array<bool, text_kind_count> is_taken_{};
};

}  // namespace

void read_png_chunks(ByteSource& source, MetadataBlocks& blocks) {
  ChunkWalk(source, blocks).run();
}

}  // namespace brindle
