#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::uint64_t table_limit = ByteSource::piece_limit;
constexpr std::uint64_t item_limit = 4U << 20U;

/// Big-endian numbers out of bytes; beyond the end all is 0 and the cursor is spent.
class Cursor {
 public:
  explicit Cursor(std::string_view bytes) : bytes_(bytes) {}

  bool spent() const { return spent_; }
  bool at_end() const { return bytes_.empty(); }

  std::uint64_t number(std::size_t size) {
    std::uint64_t value = 0;
    for (const char byte : bytes(size)) value = value << 8U | static_cast<unsigned char>(byte);
    return value;
  }
  std::uint32_t u16() { return static_cast<std::uint32_t>(number(2)); }
  std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }

  std::string_view bytes(std::uint64_t count) {
    if (count > bytes_.size()) {
      spent_ = true;
      bytes_ = {};
      return {};
    }
    const std::string_view taken = bytes_.substr(0, static_cast<std::size_t>(count));
    bytes_.remove_prefix(taken.size());
    return taken;
  }
  std::string_view text() {
    const std::string_view taken = bytes(std::min(bytes_.find('\0'), bytes_.size()));
    bytes(1);
    return taken;
  }

 private:
  std::string_view bytes_;
  bool spent_ = false;
};

struct Box {
  std::string_view type;
  std::string_view content;
};

// The boxes that stand one behind the other.
std::optional<Box> next_box(Cursor& cursor) {
  if (cursor.at_end()) return std::nullopt;
  std::uint64_t size = cursor.u32();
  const std::string_view type = cursor.bytes(4);
  std::uint64_t head = 8;
  if (size == 1) {
    size = cursor.number(8);
    head = 16;
  }
  if (size < head) return std::nullopt;
  const std::string_view content = cursor.bytes(size - head);
  return cursor.spent() ? std::nullopt : std::optional(Box{type, content});
}

std::string_view child(std::string_view content, std::string_view type) {
  Cursor cursor(content);
  while (const std::optional<Box> box = next_box(cursor)) {
    if (box->type == type) return box->content;
  }
  return {};
}

struct Extent {
  bool in_table;  // counted from the table's own data, not from the start of the file
  std::uint64_t offset;
  std::uint64_t size;
};

struct ItemIds {
  std::optional<std::uint32_t> exif;
  std::optional<std::uint32_t> xmp;
};

void note_item(std::string_view entry, ItemIds& ids) {
  Cursor cursor(entry);
  const std::uint32_t version = cursor.u32() >> 24U;
  if (version < 2) return;
  const std::uint32_t id = version == 2 ? cursor.u16() : cursor.u32();
  cursor.u16();
  const std::string_view type = cursor.bytes(4);
  if (type == "Exif" && !ids.exif) ids.exif = id;
  if (type != "mime" || ids.xmp) return;
  cursor.text();
  if (cursor.text() == "application/rdf+xml") ids.xmp = id;
}

ItemIds find_items(std::string_view item_info) {
  Cursor cursor(item_info);
  const std::uint32_t version = cursor.u32() >> 24U;
  cursor.number(version == 0 ? 2 : 4);
  ItemIds ids;
  while (const std::optional<Box> entry = next_box(cursor)) note_item(entry->content, ids);
  return ids;
}

/// The table that says where items lie.
class Locations {
 public:
  explicit Locations(std::string_view table) : cursor_(table) {
    version_ = cursor_.u32() >> 24U;
    const std::uint32_t sizes = cursor_.u16();
    offset_size_ = sizes >> 12U & 15U;
    length_size_ = sizes >> 8U & 15U;
    base_size_ = sizes >> 4U & 15U;
    index_size_ = version_ == 0 ? 0 : sizes & 15U;
    count_ = version_ < 2 ? cursor_.u16() : cursor_.u32();
  }

  /// To be asked once: reads the table up to the item.
  std::vector<Extent> find(std::uint32_t wanted) {
    for (std::uint32_t i = 0; i < count_ && !cursor_.spent(); ++i) {
      const std::uint32_t id = version_ < 2 ? cursor_.u16() : cursor_.u32();
      std::vector<Extent> extents = read_extents();
      if (id == wanted && !cursor_.spent()) return extents;
    }
    return {};
  }

 private:
  std::vector<Extent> read_extents() {
    const std::uint32_t method = version_ == 0 ? 0 : cursor_.u16() & 15U;
    cursor_.u16();
    const std::uint64_t base = cursor_.number(base_size_);
    // Extents that take no bytes could be counted for ever.
    const bool is_empty = index_size_ + offset_size_ + length_size_ == 0;
    const std::uint32_t count = std::min(cursor_.u16(), is_empty ? 1U : UINT16_MAX);
    std::vector<Extent> extents;
    for (std::uint32_t i = 0; i < count && !cursor_.spent(); ++i) {
      cursor_.number(index_size_);
      const std::uint64_t offset = base + cursor_.number(offset_size_);
      extents.push_back({method == 1, offset, cursor_.number(length_size_)});
    }
    if (method > 1) extents.clear();  // made of other items
    return extents;
  }

  Cursor cursor_;
  std::uint32_t version_ = 0;
  std::uint32_t offset_size_ = 0;
  std::uint32_t length_size_ = 0;
  std::uint32_t base_size_ = 0;
  std::uint32_t index_size_ = 0;
  std::uint32_t count_ = 0;
};

// Pictures made of tiles list the tiles' size too.
void note_sizes(std::string_view properties, MetadataBlocks& blocks) {
  Cursor cursor(properties);
  while (const std::optional<Box> box = next_box(cursor)) {
    if (box->type != "ispe") continue;
    Cursor size(box->content);
    size.u32();
    const std::uint32_t width = size.u32();
    const std::uint32_t height = size.u32();
    if (std::uint64_t{width} * height <= std::uint64_t{blocks.width} * blocks.height) continue;
    blocks.width = width;
    blocks.height = height;
  }
}

class ItemReader {
 public:
  ItemReader(ByteSource& source, std::string_view table)
      : source_(source), data_(child(table, "idat")), locations_(child(table, "iloc")) {}

  std::string read(std::uint32_t id) const {
    std::string bytes;
    for (const Extent& extent : Locations(locations_).find(id)) {
      if (extent.size > item_limit || bytes.size() + extent.size > item_limit) return {};
      append(extent, bytes);
    }
    return bytes;
  }

 private:
  void append(const Extent& extent, std::string& bytes) const {
    if (!extent.in_table) {
      bytes += source_.copy(extent.offset, extent.size);
    } else if (extent.offset < data_.size()) {
      bytes.append(data_.substr(extent.offset, extent.size));
    }
  }

  ByteSource& source_;
  std::string_view data_;
  std::string_view locations_;
};

// The item begins with how far behind this number the structure is.
std::string exif_structure(const std::string& item) {
  Cursor cursor(item);
  const std::uint64_t start = std::uint64_t{4} + cursor.u32();
  return start < item.size() ? item.substr(start) : std::string();
}

// Collects EXIF, XMP and the largest picture's size; `meta` is the content of the box of that name. What is damaged is
// left out; tables and items above 4 MiB are not looked at.
void read_heif_items(ByteSource& source, BlockPlace meta, MetadataBlocks& blocks) {
  if (meta.size < 4 || meta.size > table_limit) return;
  const std::string table = source.copy(meta.start + 4, meta.size - 4);
  const ItemIds ids = find_items(child(table, "iinf"));
  const ItemReader reader(source, table);
  if (ids.exif) read_tiff_notes(exif_structure(reader.read(*ids.exif)), blocks.notes);
  if (ids.xmp) blocks.xmp = reader.read(*ids.xmp);
  note_sizes(child(child(table, "iprp"), "ipco"), blocks);
}

// The boxes that stand around the items, and in other files.

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
