#include "platform/jpeg_segments.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

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

/// Bytes of the file, most of them read with the first call.
class Window {
 public:
  explicit Window(const RegularFile& file) : file_(file) {}

  /// `count` (at most the window's size) bytes at `offset`; fewer at the end of the file.
  std::string_view at(std::uint64_t offset, std::size_t count) {
    if (offset < start_ || offset + count > start_ + size_) {
      start_ = offset;
      size_ = file_.read_at(offset, bytes_.data(), bytes_.size());
    }
    return held(offset, count);
  }

  /// Those of the `count` bytes at `offset` that need no further read.
  std::string_view held(std::uint64_t offset, std::size_t count) const {
    if (offset < start_ || offset > start_ + size_) return {};
    const std::size_t from = static_cast<std::size_t>(offset - start_);
    return {bytes_.data() + from, std::min(count, size_ - from)};
  }

 private:
  const RegularFile& file_;
  std::uint64_t start_ = 0;
  std::size_t size_ = 0;
  std::array<char, 16384> bytes_;
};

unsigned value_at(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}
unsigned short_at(std::string_view bytes, std::size_t index) {
  return value_at(bytes, index) << 8U | value_at(bytes, index + 1);
}

class SegmentWalk {
 public:
  SegmentWalk(const RegularFile& file, ImageParts wanted, MetadataBlocks& blocks)
      : file_(file), window_(file), wanted_(wanted), found_(blocks) {}

  bool run(std::uint64_t start) {
    if (window_.at(start, 3) != "\xFF\xD8\xFF"sv) return false;
    std::uint64_t offset = start + 2;
    for (int i = 0; i < segment_limit && offset != 0 && !is_complete(); ++i) offset = segment(offset);
    return true;
  }

 private:
  // IPTC may be spread over segments anywhere before the scan.
  bool is_complete() const {
    return !wanted_.iptc && (!wanted_.exif || !found_.exif.empty()) && (!wanted_.size || found_.width != 0);
  }

  // Looks at the segment at `offset`; returns where the next one is, 0 for nowhere.
  std::uint64_t segment(std::uint64_t offset) {
    const std::string_view head = window_.at(offset, 4);
    if (head.size() < 4 || value_at(head, 0) != 0xFF) return 0;
    const unsigned marker = value_at(head, 1);
    if (marker == 0xFF) return offset + 1;  // a fill byte
    const unsigned length = short_at(head, 2);
    if (marker == start_of_scan || marker == end_of_image || length < 2) return 0;
    take(marker, offset + 4, length - 2);
    return offset + 2 + length;
  }

  void take(unsigned marker, std::uint64_t offset, std::size_t size) {
    if (marker == app1 && wanted_.exif && found_.exif.empty()) take_named(exif_name, offset, size, found_.exif);
    if (marker == app1 && wanted_.iptc && found_.xmp.empty()) take_named(xmp_name, offset, size, found_.xmp);
    if (marker == app13 && wanted_.iptc) take_named(photoshop_name, offset, size, found_.photoshop);
    if (is_frame(marker) && wanted_.size && size >= 5) take_frame(window_.at(offset, 5));
  }

  void take_frame(std::string_view frame) {
    if (frame.size() < 5) return;
    found_.height = short_at(frame, 1);
    found_.width = short_at(frame, 3);
  }

  // Appends the segment to `out` when it bears the name.
  void take_named(std::string_view name, std::uint64_t offset, std::size_t size, std::string& out) {
    if (size <= name.size() || window_.at(offset, name.size()) != name) return;
    const std::size_t before = out.size();
    out.resize(before + size - name.size());
    out.resize(before + read(offset + name.size(), out.data() + before, size - name.size()));
  }

  std::size_t read(std::uint64_t offset, char* buffer, std::size_t count) {
    const std::string_view held = window_.held(offset, count);
    std::memcpy(buffer, held.data(), held.size());
    return held.size() + file_.read_at(offset + held.size(), buffer + held.size(), count - held.size());
  }

  const RegularFile& file_;
  Window window_;
  ImageParts wanted_;
  MetadataBlocks& found_;
};

}  // namespace

bool read_jpeg_segments(const RegularFile& file, std::uint64_t start, ImageParts wanted, MetadataBlocks& blocks) {
  return SegmentWalk(file, wanted, blocks).run(start);
}

}  // namespace brindle
