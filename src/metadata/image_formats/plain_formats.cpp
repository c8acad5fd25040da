
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr int block_limit = 4096;
constexpr bool little_endian = false;

std::uint32_t little_number(ByteSource& source, std::uint64_t at, std::size_t size) {
  return static_cast<std::uint32_t>(source.number(at, size, little_endian));
}

void take_webp_chunk(ByteSource& source, std::string_view type, BlockPlace content, MetadataBlocks& blocks) {
  const std::uint64_t at = content.start;
  if (type == "VP8X" && content.size >= 10) {
    blocks.width = little_number(source, at + 4, 3) + 1;
    blocks.height = little_number(source, at + 7, 3) + 1;
  } else if (type == "VP8 " && content.size >= 10 && blocks.width == 0 && source.at(at + 3, 3) == "\x9D\x01\x2A") {
    blocks.width = little_number(source, at + 6, 2) & 0x3FFFU;
    blocks.height = little_number(source, at + 8, 2) & 0x3FFFU;
  } else if (type == "VP8L" && content.size >= 5 && blocks.width == 0 && source.at(at, 1) == "\x2F") {
    const std::uint32_t sizes = little_number(source, at + 1, 4);
    blocks.width = (sizes & 0x3FFFU) + 1;
    blocks.height = (sizes >> 14U & 0x3FFFU) + 1;
  } else if (type == "EXIF") {
    const std::uint64_t name = content.size >= 6 && source.at(at, 6) == "Exif\0\0"sv ? 6 : 0;
    read_tiff_notes(source, {at + name, content.size - name}, blocks.notes);
  } else if (type == "XMP " && blocks.xmp.empty()) {
    blocks.xmp = source.copy(at, content.size);
  }
}

}  // namespace

void read_webp_chunks(ByteSource& source, MetadataBlocks& blocks) {
  std::uint64_t at = 12;
  for (int i = 0; i < block_limit && at + 8 <= source.size(); ++i) {
    const std::string type(source.at(at, 4));
    const std::uint64_t size = std::min<std::uint64_t>(little_number(source, at + 4, 4), source.size() - at - 8);
    take_webp_chunk(source, type, {at + 8, size}, blocks);
    at += 8 + size + size % 2;
  }
}

void read_minolta_blocks(ByteSource& source, MetadataBlocks& blocks) {
  std::uint64_t at = 8;
  const std::uint64_t end = std::min(8 + source.number(4, 4), source.size());
  for (int i = 0; i < block_limit && at + 8 <= end; ++i) {
    const BlockPlace content{at + 8, std::min(source.number(at + 4, 4), end - at - 8)};
    if (source.at(at, 4) == "\0TTW"sv) return read_tiff_file(source, content, blocks);
    at = content.start + content.size;
  }
}

void read_gif_head(ByteSource& source, MetadataBlocks& blocks) {
  blocks.width = little_number(source, 6, 2);
  blocks.height = little_number(source, 8, 2);
}

// A height below 0 says that the lines go downwards.
void read_bmp_head(ByteSource& source, MetadataBlocks& blocks) {
  blocks.width = little_number(source, 18, 4);
  const std::uint32_t height = little_number(source, 22, 4);
  blocks.height = height >> 31U != 0 ? 0U - height : height;
}

void read_xmp_file(ByteSource& source, MetadataBlocks& blocks) {
  blocks.xmp = source.copy(0, source.size());
}

}  // namespace brindle
