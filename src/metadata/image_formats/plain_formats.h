#pragma once

// Kinds of image files with little to read. Any thread.

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

void read_webp_chunks(ByteSource& source, MetadataBlocks& blocks);     ///< EXIF, XMP, the size
void read_minolta_blocks(ByteSource& source, MetadataBlocks& blocks);  ///< MRW: a TIFF file in a block
void read_gif_head(ByteSource& source, MetadataBlocks& blocks);        ///< the size
void read_bmp_head(ByteSource& source, MetadataBlocks& blocks);        ///< the size
void read_xmp_file(ByteSource& source, MetadataBlocks& blocks);        ///< a packet in a file of its own

}  // namespace brindle
