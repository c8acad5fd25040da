#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

enum TiffTag : unsigned {
  sensor_top = 4,  // these four of Panasonic's
  sensor_left = 5,
  sensor_bottom = 6,
  sensor_right = 7,
  subfile_kind = 0x00FE,
  image_width = 0x0100,
  image_height = 0x0101,
  lower_directories = 0x014A,
  jpeg_start = 0x0201,
  xmp_tag = 0x02BC,
  iptc_tag = 0x83BB,
  photoshop_tag = 0x8649,
  exif_directory = 0x8769,
};

struct NamedTag {
  unsigned number;
  ExifTag tag;
};
constexpr NamedTag first_tags[] = {{0x010F, ExifTag::make}, {0x0110, ExifTag::model}, {0x0132, ExifTag::date_time}};
constexpr NamedTag exif_tags[] = {{0x9003, ExifTag::date_time_original},
                                  {0x9286, ExifTag::user_comment},
                                  {0xA002, ExifTag::pixel_x_dimension},
                                  {0xA003, ExifTag::pixel_y_dimension}};
// Raw files may keep the date beside the camera's name.
constexpr NamedTag misplaced_tags[] = {{0x9003, ExifTag::date_time_original}};

// What stands behind the byte order: TIFF, and the makers' own numbers for the same structure.
constexpr unsigned panasonic = 0x0055;
constexpr unsigned kinds[] = {0x002A, panasonic, 0x4F52, 0x5352};

constexpr std::size_t entry_size = 12;
constexpr unsigned entry_limit = 1024;
constexpr std::size_t picture_limit = 10;
// No name holds more than 255 bytes.
constexpr std::uint64_t value_limit = 32768;

struct TiffEntry {
  unsigned tag;
  unsigned type;
  std::uint64_t size;   // in bytes
  std::uint64_t place;  // of the value, in the structure

  bool is_bytes() const { return type == 1 || type == 2 || type == 6 || type == 7; }
  bool is_number() const { return type == 3 || type == 4; }
};

/// One of the pictures in the file.
struct Picture {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  bool is_whole = false;  // neither a smaller copy nor a mask
  bool is_jpeg = false;
};

class Structure {
 public:
  Structure(ByteSource& source, BlockPlace place) : source_(source), place_(place) {
    const std::string_view head = source_.at(place_.start, 10);
    if (place_.size < 8 || head.size() < 8 || head[0] != head[1] || (head[0] != 'I' && head[0] != 'M')) return;
    big_endian_ = head[0] == 'M';
    is_canon_ = head.substr(8) == "CR";
    kind_ = static_cast<unsigned>(number_of_bytes(head.substr(2, 2), big_endian_));
    const bool is_known = std::find(std::begin(kinds), std::end(kinds), kind_) != std::end(kinds);
    first_ = is_known ? number_of_bytes(head.substr(4, 4), big_endian_) : 0;
  }

  std::uint64_t first() const { return first_; }  // 0 when this is no such structure
  bool big_endian() const { return big_endian_; }
  bool is_panasonic() const { return kind_ == panasonic; }
  bool is_canon_raw() const { return is_canon_; }

  template <class Visit>
  void for_each(std::uint64_t directory, Visit visit) {
    if (directory == 0) return;
    const unsigned count = std::min(static_cast<unsigned>(number(directory, 2)), entry_limit);
    for (unsigned i = 0; i < count; ++i) {
      if (const std::optional<TiffEntry> found = entry(directory + 2 + entry_size * i)) visit(*found);
    }
  }

  std::uint32_t number_in(const TiffEntry& entry) {
    if (!entry.is_number() || entry.size == 0) return 0;
    return static_cast<std::uint32_t>(number(entry.place, entry.type == 3 ? 2 : 4));
  }

  /// Bytes as they are, numbers as text.
  std::string text(const TiffEntry& entry) {
    if (entry.is_number()) return std::to_string(number_in(entry));
    return entry.is_bytes() && entry.size <= 2 * value_limit ? bytes(entry).substr(0, value_limit) : std::string();
  }

  std::string bytes(const TiffEntry& entry) {
    return place_.holds(entry.place, entry.size) ? source_.copy(place_.start + entry.place, entry.size) : std::string();
  }

  std::vector<std::uint64_t> offsets_in(const TiffEntry& entry) {
    std::vector<std::uint64_t> offsets;
    for (std::uint64_t i = 0; i + 4 <= entry.size && offsets.size() < picture_limit; i += 4) {
      offsets.push_back(number(entry.place + i, 4));
    }
    return offsets;
  }

 private:
  std::uint64_t number(std::uint64_t offset, std::size_t count) {
    return place_.holds(offset, count) ? source_.number(place_.start + offset, count, big_endian_) : 0;
  }

  std::optional<TiffEntry> entry(std::uint64_t offset) {
    static constexpr unsigned sizes[] = {1, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    if (!place_.holds(offset, entry_size)) return std::nullopt;
    const std::string_view bytes = source_.at(place_.start + offset, entry_size);
    if (bytes.size() < entry_size) return std::nullopt;
    const auto part = [&](std::size_t at, std::size_t size) {
      return number_of_bytes(bytes.substr(at, size), big_endian_);
    };
    const auto type = static_cast<unsigned>(part(2, 2));
    const std::uint64_t size = part(4, 4) * (type < std::size(sizes) ? sizes[type] : 1U);
    return TiffEntry{static_cast<unsigned>(part(0, 2)), type, size, size <= 4 ? offset + 8 : part(8, 4)};
  }

  ByteSource& source_;
  BlockPlace place_;
  bool big_endian_ = false;
  bool is_canon_ = false;
  unsigned kind_ = 0;
  std::uint64_t first_ = 0;
};

// The first of several values is the one that counts.
void take_entry(Structure& structure, const TiffEntry& entry, std::span<const NamedTag> tags, CameraNotes& notes) {
  for (const NamedTag& each : tags) {
    if (each.number == entry.tag && notes[each.tag].empty()) notes[each.tag] = structure.text(entry);
  }
}

void read_directory(Structure& structure, std::uint64_t directory, std::span<const NamedTag> tags, CameraNotes& notes) {
  structure.for_each(directory, [&](const TiffEntry& entry) { take_entry(structure, entry, tags, notes); });
}

void read_notes(Structure& structure, CameraNotes& notes) {
  std::uint64_t below = 0;
  structure.for_each(structure.first(), [&](const TiffEntry& entry) {
    take_entry(structure, entry, first_tags, notes);
    if (entry.tag == exif_directory && below == 0) below = structure.number_in(entry);
  });
  notes.big_endian = structure.big_endian();
  read_directory(structure, below, exif_tags, notes);
  if (notes[ExifTag::date_time_original].empty()) read_directory(structure, structure.first(), misplaced_tags, notes);
}

Picture picture_in(Structure& structure, std::uint64_t directory) {
  Picture picture;
  structure.for_each(directory, [&](const TiffEntry& entry) {
    const std::uint32_t value = structure.number_in(entry);
    if (entry.tag == image_width) picture.width = value;
    if (entry.tag == image_height) picture.height = value;
    if (entry.tag == subfile_kind) picture.is_whole = value == 0 && entry.is_number();
    picture.is_jpeg = picture.is_jpeg || entry.tag == jpeg_start;
  });
  return picture;
}

// The first picture that is whole and no JPEG; else the last that is whole, else the first of all.
Picture main_picture(Structure& structure) {
  std::vector<std::uint64_t> directories = {structure.first()};
  structure.for_each(structure.first(), [&](const TiffEntry& entry) {
    if (entry.tag != lower_directories || directories.size() > 1) return;
    const std::vector<std::uint64_t> below = structure.offsets_in(entry);
    directories.insert(directories.end(), below.begin(), below.end());
  });
  Picture best = picture_in(structure, directories.front());
  for (const std::uint64_t directory : directories) {
    const Picture picture = picture_in(structure, directory);
    if (picture.is_whole) best = picture;
    if (picture.is_whole && !picture.is_jpeg) break;
  }
  return best;
}

// Panasonic's raw files say where on the sensor the picture's borders are.
Picture picture_on_sensor(Structure& structure) {
  std::uint32_t borders[8] = {};
  structure.for_each(structure.first(), [&](const TiffEntry& entry) {
    if (entry.tag >= sensor_top && entry.tag <= sensor_right) borders[entry.tag] = structure.number_in(entry);
  });
  const auto between = [&](TiffTag low, TiffTag high) {
    return borders[high] > borders[low] ? borders[high] - borders[low] : 0;
  };
  return {between(sensor_left, sensor_right), between(sensor_top, sensor_bottom), true, false};
}

void read_blocks(Structure& structure, MetadataBlocks& blocks) {
  structure.for_each(structure.first(), [&](const TiffEntry& entry) {
    if (entry.tag == xmp_tag && blocks.xmp.empty()) blocks.xmp = structure.bytes(entry);
    if (entry.tag == iptc_tag && blocks.iptc.empty()) blocks.iptc = structure.bytes(entry);
    if (entry.tag == photoshop_tag && blocks.photoshop.empty()) blocks.photoshop = structure.bytes(entry);
  });
}

}  // namespace

void read_tiff_notes(ByteSource& source, BlockPlace place, CameraNotes& notes) {
  if (notes.structures_left-- <= 0) return;
  Structure structure(source, place);
  if (structure.first() != 0) read_notes(structure, notes);
}

void read_tiff_notes(std::string_view structure, CameraNotes& notes) {
  ByteSource source(structure);
  read_tiff_notes(source, {0, structure.size()}, notes);
}

void read_exif_directory(ByteSource& source, BlockPlace place, CameraNotes& notes) {
  if (notes.structures_left-- <= 0) return;
  Structure structure(source, place);
  if (structure.first() == 0) return;
  notes.big_endian = structure.big_endian();
  read_directory(structure, structure.first(), exif_tags, notes);
}

void read_tiff_file(ByteSource& source, BlockPlace place, MetadataBlocks& blocks) {
  Structure structure(source, place);
  if (structure.first() == 0) return;
  read_notes(structure, blocks.notes);
  read_blocks(structure, blocks);
  if (structure.is_canon_raw()) return;  // its first picture is a preview; the notes say the size
  const Picture picture = structure.is_panasonic() ? picture_on_sensor(structure) : main_picture(structure);
  blocks.width = picture.width;
  blocks.height = picture.height;
}

}  // namespace brindle
