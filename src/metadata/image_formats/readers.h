#pragma once

// The readers of image formats, and what they collect: the metadata of a file as bytes, in a few small reads, whatever
// the size of the picture. Whatever is wrong with a file ends its reading, and what was found so far stays. Any thread.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/image_file.h"
#include "platform/byte_source.h"

namespace brindle {

/// What a camera wrote down, by ExifTag: bytes of whatever character set it chose; numbers as decimal text.
struct CameraNotes {
  std::array<std::string, exif_tag_count> values;
  bool big_endian = false;  ///< how the structure writes numbers
  int structures_left = 4;  ///< to be read: files hold two at most, and hostile ones thousands

  std::string& operator[](ExifTag tag) { return values[static_cast<std::size_t>(tag)]; }
};

/// The metadata of an image file, as bytes. Empty or 0 for what is not there, or was not asked for.
struct MetadataBlocks {
  CameraNotes notes;
  std::string photoshop;    ///< image resources, one of which may hold IPTC
  std::string iptc;         ///< data sets of IPTC
  std::string xmp;          ///< the packet
  std::uint32_t width = 0;  ///< pixels, as stored
  std::uint32_t height = 0;
};

/// Where a block lies in its file.
struct BlockPlace {
  std::uint64_t start = 0;
  std::uint64_t size = 0;

  bool holds(std::uint64_t offset, std::uint64_t count) const { return offset <= size && count <= size - offset; }
};

// JPEG.

/// Collects what `wanted` says; `photoshop` and `xmp` go by its `iptc`. `first_segment` is where the first segment
/// begins, behind the start of the image.
void read_jpeg_segments(ByteSource& source, std::uint64_t first_segment, ImageParts wanted, MetadataBlocks& blocks);

// TIFF structures: the block of EXIF in files of all kinds, TIFF files, and the raw files that are built like them.

/// Adds what the structure at `place` holds to the notes that are still empty. Anything else adds nothing.
void read_tiff_notes(ByteSource& source, BlockPlace place, CameraNotes& notes);
void read_tiff_notes(std::string_view structure, CameraNotes& notes);

/// The same for a structure whose first directory is the one that others keep below it.
void read_exif_directory(ByteSource& source, BlockPlace place, CameraNotes& notes);

/// A whole file: also IPTC, XMP and the size of the picture, which need not be the first in the file.
void read_tiff_file(ByteSource& source, BlockPlace place, MetadataBlocks& blocks);

// Files made of boxes: HEIC, AVIF, Canon's CR3, JPEG 2000, JPEG XL.

/// Whether a file's first box says that it holds pictures of such a kind; `head` is the start of the file. Videos are
/// made of boxes too.
bool is_box_picture(std::string_view head);

/// Collects EXIF, IPTC, XMP and the size. Boxes are looked into three levels deep.
void read_box_file(ByteSource& source, MetadataBlocks& blocks);

// Photoshop's image resources, which hold IPTC and more; in JPEG and TIFF files, and in Photoshop's own.

/// Collects IPTC, XMP and EXIF out of the resources at `place`.
void read_photoshop_resources(ByteSource& source, BlockPlace place, MetadataBlocks& blocks);

/// IPTC's data sets out of a block of resources; empty when there are none.
std::string iptc_in_resources(std::string_view resources);

/// A whole file of Photoshop's.
void read_photoshop_file(ByteSource& source, MetadataBlocks& blocks);

/// The data sets of a block, in its order; at most 4,096, each cut behind 32 KiB. Those without a value are left out,
/// and so is what lies between data sets.
std::vector<IptcDataSet> iptc_data_sets(std::string_view block);

// Others.

/// PNG. Collects EXIF, IPTC, XMP and the size, in chunks of their own or, as older programs have it, written as text.
/// What unpacks to more than 4 MiB is left out.
void read_png_chunks(ByteSource& source, MetadataBlocks& blocks);

/// CRW, the raw files of Canon's first cameras. Collects maker, model, date, comment and size, which the file keeps in
/// a form of its own.
void read_canon_heap(ByteSource& source, MetadataBlocks& blocks);

void read_webp_chunks(ByteSource& source, MetadataBlocks& blocks);     ///< EXIF, XMP, the size
void read_minolta_blocks(ByteSource& source, MetadataBlocks& blocks);  ///< MRW: a TIFF file in a block
void read_gif_head(ByteSource& source, MetadataBlocks& blocks);        ///< the size
void read_bmp_head(ByteSource& source, MetadataBlocks& blocks);        ///< the size
void read_xmp_file(ByteSource& source, MetadataBlocks& blocks);        ///< a packet in a file of its own

}  // namespace brindle
