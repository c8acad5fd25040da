#include "platform/image_formats/png_chunks.h"

#include <zlib.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/image_formats/photoshop_resources.h"
#include "platform/image_formats/tiff_structure.h"

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

void take_named(std::string_view name, const std::string& text, MetadataBlocks& blocks) {
  if (name == "XML:com.adobe.xmp" && blocks.xmp.empty()) blocks.xmp = text;
  constexpr std::string_view profile = "Raw profile type ";
  if (!name.starts_with(profile)) return;
  const std::string_view kind = name.substr(profile.size());
  const std::string bytes = raw_profile(text);
  if (kind == "exif" || kind == "APP1") {
    const bool is_named = bytes.starts_with(exif_mark);
    read_tiff_notes(std::string_view(bytes).substr(is_named ? exif_mark.size() : 0), blocks.notes);
  }
  if (kind == "iptc") (bytes.starts_with("8BIM") ? blocks.photoshop : blocks.iptc) = bytes;
  if (kind == "xmp" && blocks.xmp.empty()) blocks.xmp = bytes;
}

bool is_wanted(std::string_view name) {
  return name == "XML:com.adobe.xmp" || name.starts_with("Raw profile type ");
}

// The name, then (in two of the three kinds) how the text is packed, then (in one) its language.
void take_text_chunk(std::string_view type, std::string_view content, MetadataBlocks& blocks) {
  const std::string_view name = take_text(content);
  if (!is_wanted(name)) return;
  bool is_packed = type == "zTXt";
  if (type == "iTXt") is_packed = content.starts_with('\1');
  const std::size_t flags = type == "iTXt" ? 2 : type == "zTXt" ? 1 : 0;
  content.remove_prefix(std::min(flags, content.size()));
  if (type == "iTXt") {
    take_text(content);
    take_text(content);
  }
  take_named(name, is_packed ? unpacked(content) : std::string(content), blocks);
}

void take_chunk(ByteSource& source, std::string_view type, BlockPlace content, MetadataBlocks& blocks) {
  if (type == "IHDR") {
    blocks.width = static_cast<std::uint32_t>(source.number(content.start, 4));
    blocks.height = static_cast<std::uint32_t>(source.number(content.start + 4, 4));
  } else if (type == "eXIf") {
    read_tiff_notes(source, content, blocks.notes);
  } else if (type == "tEXt" || type == "zTXt" || type == "iTXt") {
    take_text_chunk(type, source.copy(content.start, content.size), blocks);
  }
}

}  // namespace

void read_png_chunks(ByteSource& source, MetadataBlocks& blocks) {
  std::uint64_t at = 8;
  for (int i = 0; i < chunk_limit && at < source.size(); ++i) {
    const std::string_view head = source.at(at, 8);
    if (head.size() < 8) return;
    const std::uint64_t size = number_of_bytes(head.substr(0, 4), true);
    const std::string type(head.substr(4));
    if (type == "IEND" || size > source.size() - at) return;
    take_chunk(source, type, {at + 8, size}, blocks);
    at += 8 + size + 4;
  }
}

}  // namespace brindle
