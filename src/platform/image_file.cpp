#include "platform/image_file.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <string_view>

#include "platform/heif_items.h"
#include "platform/image_module/image_module.h"
#include "platform/jpeg_segments.h"
#include "platform/module.h"
#include "platform/regular_file.h"

namespace brindle {
namespace {

// Above this a file is no picture. (Raw files are mapped, never read whole.)
constexpr std::uint64_t size_limit = std::uint64_t{4} << 30U;

struct Decoders {
  Module module{image_module::file_name, image_module::revision};
  decltype(&image_module::brindle_decode_exif) exif =
      module.function<decltype(image_module::brindle_decode_exif)>("brindle_decode_exif");
  decltype(&image_module::brindle_decode_photoshop) photoshop =
      module.function<decltype(image_module::brindle_decode_photoshop)>("brindle_decode_photoshop");
  decltype(&image_module::brindle_read_image) image =
      module.function<decltype(image_module::brindle_read_image)>("brindle_read_image");

  bool complete() const { return exif != nullptr && photoshop != nullptr && image != nullptr; }
};

const Decoders& decoders() {
  static const Decoders decoders;
  return decoders;
}

std::uint32_t number_of(std::string_view digits) {
  std::uint32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

// The first of several values is the one that counts.
void set_once(std::string& value, std::string_view bytes) {
  if (value.empty()) value = bytes;
}

void keep(ImageFileData& data, std::uint32_t tag, std::string_view bytes) {
  if (tag >= image_module::iptc_base) {
    const std::uint32_t number = tag - image_module::iptc_base;
    data.iptc.push_back(
        {static_cast<std::uint8_t>(number >> 8U), static_cast<std::uint8_t>(number & 0xFFU), std::string(bytes)});
    return;
  }
  switch (tag) {
    case image_module::pixel_width:
      data.width = number_of(bytes);
      return;
    case image_module::pixel_height:
      data.height = number_of(bytes);
      return;
    case image_module::big_endian:
      data.big_endian = true;
      return;
    case image_module::xmp_packet:
      set_once(data.xmp_packet, bytes);
      return;
    default:
      if (tag < exif_tag_count) set_once(data.exif[tag], bytes);
  }
}

/// Collects the values into `data`; without memory for one, that one is left out.
image_module::Sink sink_into(ImageFileData& data) {
  return {&data, [](void* context, std::uint32_t tag, const char* bytes, std::size_t size) {
            try {
              keep(*static_cast<ImageFileData*>(context), tag, {bytes, size});
            } catch (const std::bad_alloc&) {
              return;
            }
          }};
}

unsigned char* bytes_of(std::string& block) {
  return reinterpret_cast<unsigned char*>(block.data());
}

void decode(MetadataBlocks& blocks, ImageParts parts, ImageFileData& data) {
  const image_module::Sink sink = sink_into(data);
  if (!blocks.exif.empty()) decoders().exif(bytes_of(blocks.exif), blocks.exif.size(), parts.exif_tags, &sink);
  if (!blocks.photoshop.empty()) decoders().photoshop(bytes_of(blocks.photoshop), blocks.photoshop.size(), &sink);
  if (!blocks.xmp.empty()) data.xmp_packet.swap(blocks.xmp);
  data.width = blocks.width;
  data.height = blocks.height;
}

// Where Fuji's raw files keep the picture that they show on the camera, and with it all metadata; 0 for other files.
std::uint64_t preview_start(const RegularFile& file) {
  constexpr std::string_view name = "FUJIFILMCCD-RAW ";
  constexpr std::size_t offset_place = 84;
  std::array<unsigned char, offset_place + 4> head{};
  if (file.read_at(0, head.data(), head.size()) < head.size()) return 0;
  if (!std::equal(name.begin(), name.end(), head.begin())) return 0;
  std::uint64_t start = 0;
  for (std::size_t i = offset_place; i < head.size(); ++i) start = start << 8U | head[i];
  return start;
}

bool read_preview(const RegularFile& file, ImageParts parts, MetadataBlocks& blocks) {
  const std::uint64_t start = preview_start(file);
  parts.size = false;  // the preview's own, not the picture's
  return start != 0 && read_jpeg_segments(file, start, parts, blocks);
}

}  // namespace

ImageFileData read_image_file(const std::string& path, ImageParts parts) {
  ImageFileData data;
  const RegularFile file = RegularFile::open(path);
  if (!file || file.size() == 0 || file.size() > size_limit || !decoders().complete()) return data;
  file.expect_small_reads();
  MetadataBlocks blocks;
  if (read_jpeg_segments(file, 0, parts, blocks) || read_heif_items(file, blocks) ||
      read_preview(file, parts, blocks)) {
    decode(blocks, parts, data);
  } else {
    const image_module::Sink sink = sink_into(data);
    decoders().image(file.descriptor(), file.size(), &sink);
  }
  return data;
}

}  // namespace brindle
