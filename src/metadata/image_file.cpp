#include "metadata/image_file.h"

#include <string_view>
#include <utility>

#include "metadata/image_formats/readers.h"
#include "platform/byte_source.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

// Above this a file is no picture.
constexpr std::uint64_t size_limit = std::uint64_t{4} << 30U;

void read_jpeg(ByteSource& source, ImageParts parts, MetadataBlocks& blocks) {
  read_jpeg_segments(source, 2, parts, blocks);
}

void read_segments_alone(ByteSource& source, ImageParts parts, MetadataBlocks& blocks) {
  read_jpeg_segments(source, 7, parts, blocks);
}

// Fuji's raw files hold all metadata in the picture that they show on the camera.
void read_fuji(ByteSource& source, ImageParts parts, MetadataBlocks& blocks) {
  const std::uint64_t start = source.number(84, 4);
  parts.size = false;  // the preview's own, not the picture's
  if (source.at(start, 3) == "\xFF\xD8\xFF") read_jpeg_segments(source, start + 2, parts, blocks);
}

template <void (*Read)(ByteSource&, MetadataBlocks&)>
void read_all(ByteSource& source, ImageParts /*parts*/, MetadataBlocks& blocks) {
  Read(source, blocks);
}

void read_tiff(ByteSource& source, MetadataBlocks& blocks) {
  read_tiff_file(source, {0, source.size()}, blocks);
}

using ReadKind = void (*)(ByteSource&, ImageParts, MetadataBlocks&);

struct Kind {
  std::size_t offset;
  std::string_view bytes;
  ReadKind read;
};

// The first that fits.
constexpr Kind image_kinds[] = {
    {0, "\xFF\xD8\xFF"sv, read_jpeg},
    {0,
     "\xFF\x01"
     "Exiv2"sv,
     read_segments_alone},
    {0, "\x89PNG\r\n\x1A\n"sv, read_all<read_png_chunks>},
    {8, "WEBPVP8"sv, read_all<read_webp_chunks>},
    {0, "FUJIFILMCCD-RAW "sv, read_fuji},
    {6, "HEAPCCDR"sv, read_all<read_canon_heap>},
    {0, "\0MRM"sv, read_all<read_minolta_blocks>},
    {0, "II"sv, read_all<read_tiff>},
    {0, "MM"sv, read_all<read_tiff>},
    {0, "8BPS"sv, read_all<read_photoshop_file>},
    {0, "GIF8"sv, read_all<read_gif_head>},
    {0, "BM"sv, read_all<read_bmp_head>},
    {0, "<?xpacket"sv, read_all<read_xmp_file>},
    {0, "<x:xmpmeta"sv, read_all<read_xmp_file>},
};

// What a file is, its first bytes say, whatever it is called; null for what is no picture.
ReadKind reader_for(std::string_view head) {
  if (is_box_picture(head)) return read_all<read_box_file>;
  for (const Kind& kind : image_kinds) {
    if (head.size() > kind.offset && head.substr(kind.offset).starts_with(kind.bytes)) return kind.read;
  }
  return nullptr;
}

ImageFileData data_of(MetadataBlocks&& blocks) {
  ImageFileData data{.exif = std::move(blocks.notes.values),
                     .big_endian = blocks.notes.big_endian,
                     .iptc = iptc_data_sets(blocks.iptc),
                     .xmp_packet = std::move(blocks.xmp),
                     .width = blocks.width,
                     .height = blocks.height};
  if (data.iptc.empty() && !blocks.photoshop.empty()) data.iptc = iptc_data_sets(iptc_in_resources(blocks.photoshop));
  return data;
}

}  // namespace

ImageFileData read_image_file(const std::string& path, ImageParts parts) {
  constexpr std::size_t head_size = 64;
  const RegularFile file = RegularFile::open(path);
  if (!file || file.size() == 0 || file.size() > size_limit) return {};
  file.expect_small_reads();
  ByteSource source(file);
  const ReadKind read = reader_for(source.at(0, head_size));
  if (read == nullptr) return {};
  MetadataBlocks blocks;
  read(source, parts, blocks);
  return data_of(std::move(blocks));
}

}  // namespace brindle
