
#include <algorithm>
#include <iterator>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

enum ResourceId : unsigned { iptc_resource = 0x0404, exif_resource = 0x0422, xmp_resource = 0x0424 };

constexpr std::string_view resource_marks[] = {"8BIM", "AgHg", "DCSR", "PHUT"};
constexpr int resource_limit = 4096;

bool is_mark(std::string_view bytes) {
  return std::find(std::begin(resource_marks), std::end(resource_marks), bytes) != std::end(resource_marks);
}

void take_resource(ByteSource& source, std::uint64_t id, BlockPlace content, MetadataBlocks& blocks) {
  if (id == iptc_resource && blocks.iptc.empty()) blocks.iptc = source.copy(content.start, content.size);
  if (id == xmp_resource && blocks.xmp.empty()) blocks.xmp = source.copy(content.start, content.size);
  if (id == exif_resource) read_tiff_notes(source, content, blocks.notes);
}

}  // namespace

// A mark, a number, a name with its length before it, the size, the content; name and content padded to even sizes.
void read_photoshop_resources(ByteSource& source, BlockPlace place, MetadataBlocks& blocks) {
  std::uint64_t at = place.start;
  const std::uint64_t end = place.start + place.size;
  for (int i = 0; i < resource_limit && at + 12 <= end && is_mark(source.at(at, 4)); ++i) {
    const std::uint64_t id = source.number(at + 4, 2);
    const std::uint64_t name_size = (source.number(at + 6, 1) + 2) / 2 * 2;
    const std::uint64_t content = at + 6 + name_size + 4;
    const std::uint64_t size = source.number(content - 4, 4);
    if (content > end) return;
    take_resource(source, id, {content, std::min(size, end - content)}, blocks);
    at = content + size + size % 2;
  }
}

std::string iptc_in_resources(std::string_view resources) {
  ByteSource source(resources);
  MetadataBlocks blocks;
  read_photoshop_resources(source, {0, resources.size()}, blocks);
  return blocks.iptc;
}

void read_photoshop_file(ByteSource& source, MetadataBlocks& blocks) {
  constexpr std::uint64_t palette_at = 26;
  blocks.height = static_cast<std::uint32_t>(source.number(14, 4));
  blocks.width = static_cast<std::uint32_t>(source.number(18, 4));
  const std::uint64_t resources_at = palette_at + 4 + source.number(palette_at, 4);
  const BlockPlace resources{resources_at + 4, source.number(resources_at, 4)};
  read_photoshop_resources(source, resources, blocks);
}

}  // namespace brindle
