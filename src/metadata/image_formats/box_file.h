#pragma once

// Files made of boxes: HEIC, AVIF, Canon's CR3, JPEG 2000, JPEG XL. Any thread.

#include <string_view>

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Whether a file's first box says that it holds pictures of such a kind; `head` is the start of the file. Videos are
/// made of boxes too.
bool is_box_picture(std::string_view head);

/// Collects EXIF, IPTC, XMP and the size. Boxes are looked into three levels deep.
void read_box_file(ByteSource& source, MetadataBlocks& blocks);

}  // namespace brindle
