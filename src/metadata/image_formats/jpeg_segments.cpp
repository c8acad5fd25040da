#include <string>
#include <string_view>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view exif_name = "Exif\0\0"sv;
constexpr std::string_view photoshop_name = "Photoshop 3.0\0"sv;
constexpr std::string_view xmp_name = "http://ns.adobe.com/xap/1.0/\0"sv;

enum Marker : unsigned {
  first_frame = 0xC0,
  last_frame = 0xCF,
  huffman_table = 0xC4,
  extension = 0xC8,
  arithmetic_table = 0xCC,
  end_of_image = 0xD9,
  start_of_scan = 0xDA,
  app1 = 0xE1,
  app13 = 0xED,
};

bool is_frame(unsigned marker) {
  return marker >= first_frame && marker <= last_frame && marker != huffman_table && marker != extension &&
         marker != arithmetic_table;
}

// No camera writes as many; each costs a read.
constexpr int segment_limit = 4096;

unsigned value_at(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}
unsigned short_at(std::string_view bytes, std::size_t index) {
  return value_at(bytes, index) << 8U | value_at(bytes, index + 1);
}

class SegmentWalk {
 public:
  SegmentWalk(ByteSource& source, ImageParts wanted, MetadataBlocks& blocks)
      : source_(source), wanted_(wanted), found_(blocks) {}

  void run(std::uint64_t offset) {
    for (int i = 0; i < segment_limit && offset != 0 && !is_complete(); ++i) offset = segment(offset);
  }

 private:
  // IPTC may be spread over segments anywhere before the scan.
  bool is_complete() const {
    return !wanted_.iptc && (!wanted_.exif || has_exif_) && (!wanted_.size || found_.width != 0);
  }

  // Looks at the segment at `offset`; returns where the next one is, 0 for nowhere.
  std::uint64_t segment(std::uint64_t offset) {
    const std::string_view head = source_.at(offset, 4);
    if (head.size() < 4 || value_at(head, 0) != 0xFF) return 0;
    const unsigned marker = value_at(head, 1);
    if (marker == 0xFF) return offset + 1;  // a fill byte
    const unsigned length = short_at(head, 2);
    if (marker == start_of_scan || marker == end_of_image || length < 2) return 0;
    take(marker, {offset + 4, length - 2});
    return offset + 2 + length;
  }

  void take(unsigned marker, BlockPlace place) {
    if (marker == app1 && wanted_.exif && !has_exif_) take_exif(place);
    if (marker == app1 && wanted_.iptc && found_.xmp.empty()) append_named(xmp_name, place, found_.xmp);
    if (marker == app13 && wanted_.iptc) append_named(photoshop_name, place, found_.photoshop);
    if (is_frame(marker) && wanted_.size && place.size >= 5) take_frame(source_.at(place.start, 5));
  }

  void take_exif(BlockPlace place) {
    if (!is_named(exif_name, place)) return;
    has_exif_ = true;
    read_tiff_notes(source_, {place.start + exif_name.size(), place.size - exif_name.size()}, found_.notes);
  }

  void take_frame(std::string_view frame) {
    if (frame.size() < 5) return;
    found_.height = short_at(frame, 1);
    found_.width = short_at(frame, 3);
  }

  bool is_named(std::string_view name, BlockPlace place) {
    return place.size > name.size() && source_.at(place.start, name.size()) == name;
  }

  void append_named(std::string_view name, BlockPlace place, std::string& out) {
    if (is_named(name, place)) out += source_.copy(place.start + name.size(), place.size - name.size());
  }

  ByteSource& source_;
  ImageParts wanted_;
  MetadataBlocks& found_;
  bool has_exif_ = false;
};

}  // namespace

void read_jpeg_segments(ByteSource& source, std::uint64_t first_segment, ImageParts wanted, MetadataBlocks& blocks) {
  SegmentWalk(source, wanted, blocks).run(first_segment);
}

}  // namespace brindle
