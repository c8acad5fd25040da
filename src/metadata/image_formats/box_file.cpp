#include "metadata/image_formats/box_file.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "metadata/image_formats/heif_items.h"
#include "metadata/image_formats/tiff_structure.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view brands[] = {"heic", "heix", "heim", "heis", "heif", "mif1",
                                       "mif2", "avif", "avio", "avis", "crx ", "jxl "};
constexpr std::string_view signatures[] = {"\0\0\0\x0CjP  \r\n\x87\n"sv, "\0\0\0\x0CJXL \r\n\x87\n"sv};

constexpr std::size_t id_size = 16;
constexpr std::string_view canon_id = "\x85\xC0\xB6\x87\x82\x0F\x11\xE0\x81\x11\xF4\xCE\x46\x2B\x6A\x48"sv;
constexpr std::string_view xmp_id = "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC"sv;
constexpr std::string_view iptc_id = "\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38"sv;
constexpr std::string_view exif_id = "JpgTiffExif->JP2"sv;

constexpr int depth_limit = 3;
constexpr int box_limit = 4096;

bool is_brand(std::string_view text) {
  return std::find(std::begin(brands), std::end(brands), text) != std::end(brands);
}

class BoxWalk {
 public:
  BoxWalk(ByteSource& source, MetadataBlocks& blocks) : source_(source), found_(blocks) {}

  // NOLINTNEXTLINE(misc-no-recursion): to depth_limit and no further
  void run(BlockPlace place, int depth) {
    if (depth == depth_limit) return;
    const std::uint64_t end = place.start + place.size;
    while (place.start < end && boxes_left_-- > 0) place.start = box(place.start, end, depth);
  }

 private:
  // Looks at the box at `offset`; returns where the next one is.
  // NOLINTNEXTLINE(misc-no-recursion)
  std::uint64_t box(std::uint64_t offset, std::uint64_t end, int depth) {
    std::uint64_t size = source_.number(offset, 4);
    const std::string type(source_.at(offset + 4, 4));
    const std::uint64_t head = size == 1 ? 16 : 8;
    if (size == 0) size = end - offset;
    if (size == 1) size = source_.number(offset + 8, 8);
    if (size < head || size > end - offset) return end;
    take(type, {offset + head, size - head}, depth);
    return offset + size;
  }

  // NOLINTNEXTLINE(misc-no-recursion)
  void take(std::string_view type, BlockPlace content, int depth) {
    if (type == "uuid") return take_by_id(content, depth);
    if (type == "moov" || type == "jp2h") run(content, depth + 1);
    if (type == "meta" && depth == 0) read_heif_items(source_, content, found_);
    if (type == "CMT1") read_tiff_notes(source_, content, found_.notes);
    if (type == "CMT2") read_exif_directory(source_, content, found_.notes);
    if (type == "Exif" && content.size > 4) take_exif(content);
    if (type == "xml " && found_.xmp.empty()) found_.xmp = source_.copy(content.start, content.size);
    if (type == "ihdr") take_size(content);
  }

  // NOLINTNEXTLINE(misc-no-recursion)
  void take_by_id(BlockPlace content, int depth) {
    if (content.size < id_size) return;
    const std::string id(source_.at(content.start, id_size));
    const BlockPlace rest{content.start + id_size, content.size - id_size};
    if (id == canon_id) run(rest, depth + 1);
    if (id == exif_id) read_tiff_notes(source_, rest, found_.notes);
    if (id == xmp_id && found_.xmp.empty()) found_.xmp = source_.copy(rest.start, rest.size);
    if (id == iptc_id && found_.iptc.empty()) found_.iptc = source_.copy(rest.start, rest.size);
  }

  // Four bytes say how far behind them the structure is.
  void take_exif(BlockPlace content) {
    const std::uint64_t start = 4 + source_.number(content.start, 4);
    if (start < content.size) read_tiff_notes(source_, {content.start + start, content.size - start}, found_.notes);
  }

  void take_size(BlockPlace content) {
    found_.height = static_cast<std::uint32_t>(source_.number(content.start, 4));
    found_.width = static_cast<std::uint32_t>(source_.number(content.start + 4, 4));
  }

  ByteSource& source_;
  MetadataBlocks& found_;
  int boxes_left_ = box_limit;
};

}  // namespace

bool is_box_picture(std::string_view head) {
  for (const std::string_view signature : signatures) {
    if (head.starts_with(signature)) return true;
  }
  if (head.substr(std::min<std::size_t>(head.size(), 4), 4) != "ftyp") return false;
  const auto size = std::min<std::uint64_t>(number_of_bytes(head.substr(0, 4), true), head.size());
  // The kind itself, its version, and what else it may be read as.
  for (std::size_t at = 8; at + 4 <= size; at += at == 8 ? 8 : 4) {
    if (is_brand(head.substr(at, 4))) return true;
  }
  return false;
}

void read_box_file(ByteSource& source, MetadataBlocks& blocks) {
  BoxWalk(source, blocks).run({0, source.size()}, 0);
}

}  // namespace brindle
