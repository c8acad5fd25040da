#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "metadata/image_formats/readers.h"

namespace brindle {
namespace {

// Two bits say where a value lies, three what it is, the others which it is.
enum HeapTag : unsigned {
  comment_tag = 0x0805,
  camera_tag = 0x080A,
  time_tag = 0x180E,
  size_tag = 0x1810,
  tag_bits = 0x3FFF,
  place_bits = 0xC000,
  in_entry = 0x4000,
  kind_bits = 0x3800,
  heap_kind = 0x2800,
  second_heap_kind = 0x3000,
};
constexpr std::size_t heap_entry_size = 10;
constexpr std::uint64_t heap_text_limit = 1024;
constexpr int heap_depth_limit = 4;
constexpr int heap_entry_limit = 4096;

class Heap {
 public:
  Heap(ByteSource& source, MetadataBlocks& blocks)
      : source_(source), found_(blocks), big_endian_(source.at(0, 1) == "M") {}

  void run() {
    const std::uint64_t start = number(2, 4);
    if (start < source_.size()) heap({start, source_.size() - start}, 0);
  }

 private:
  std::uint64_t number(std::uint64_t at, std::size_t size) { return source_.number(at, size, big_endian_); }

  // The last four bytes of a heap say where in it its directory is.
  // NOLINTNEXTLINE(misc-no-recursion): to heap_depth_limit and no further
  void heap(BlockPlace place, int depth) {
    if (place.size < 4 || depth == heap_depth_limit) return;
    const std::uint64_t directory = place.start + number(place.start + place.size - 4, 4);
    const std::uint64_t count = number(directory, 2);
    for (std::uint64_t i = 0; i < count && entries_left_-- > 0; ++i) {
      entry(directory + 2 + i * heap_entry_size, place, depth);
    }
  }

  // NOLINTNEXTLINE(misc-no-recursion)
  void entry(std::uint64_t at, BlockPlace around, int depth) {
    const auto tag = static_cast<unsigned>(number(at, 2));
    BlockPlace value{at + 2, 8};
    if ((tag & place_bits) != in_entry) {
      const std::uint64_t offset = number(at + 6, 4);
      value = {around.start + offset, number(at + 2, 4)};
      if (!around.holds(offset, value.size)) return;
    }
    const unsigned kind = tag & kind_bits;
    if (kind == heap_kind || kind == second_heap_kind) return heap(value, depth + 1);
    take(tag & tag_bits, value);
  }

  void take(unsigned tag, BlockPlace value) {
    if (tag == comment_tag) note(ExifTag::user_comment, text(value));
    if (tag == camera_tag) take_camera(text(value));
    if (tag == time_tag) note(ExifTag::date_time_original, stamp(number(value.start, 4)));
    if (tag != size_tag) return;
    found_.width = static_cast<std::uint32_t>(number(value.start, 4));
    found_.height = static_cast<std::uint32_t>(number(value.start + 4, 4));
  }

  std::string text(BlockPlace value) { return source_.copy(value.start, std::min(value.size, heap_text_limit)); }

  // The maker, NUL, the model, NUL.
  void take_camera(const std::string& names) {
    const std::size_t end = names.find('\0');
    note(ExifTag::make, names.substr(0, end));
    if (end != std::string::npos) note(ExifTag::model, names.substr(end + 1));
  }

  void note(ExifTag tag, std::string value) {
    if (found_.notes[tag].empty()) found_.notes[tag] = std::move(value);
  }

  // Seconds since 1970 by the camera's own clock, as other cameras write them.
  static std::string stamp(std::uint64_t seconds) {
    if (seconds == 0) return {};
    const std::chrono::sys_seconds moment{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    char text[32];
    const int size = std::snprintf(text, sizeof text, "%04d:%02u:%02u %02d:%02d:%02d", int{date.year()},
                                   unsigned{date.month()}, unsigned{date.day()}, static_cast<int>(time.hours().count()),
                                   static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text, static_cast<std::size_t>(size)};
  }

  ByteSource& source_;
  MetadataBlocks& found_;
  bool big_endian_;
  int entries_left_ = heap_entry_limit;
};

}  // namespace

void read_canon_heap(ByteSource& source, MetadataBlocks& blocks) {
  Heap(source, blocks).run();
}

}  // namespace brindle
