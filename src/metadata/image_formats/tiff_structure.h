#pragma once

// TIFF structures: the block of EXIF in files of all kinds, TIFF files, and the raw files that are built like them. A
// few small reads, whatever the size of the picture. Any thread.

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Adds what the structure at `place` holds to the notes that are still empty. Anything else adds nothing.
void read_tiff_notes(ByteSource& source, BlockPlace place, CameraNotes& notes);
void read_tiff_notes(std::string_view structure, CameraNotes& notes);

/// The same for a structure whose first directory is the one that others keep below it.
void read_exif_directory(ByteSource& source, BlockPlace place, CameraNotes& notes);

/// A whole file: also IPTC, XMP and the size of the picture, which need not be the first in the file.
void read_tiff_file(ByteSource& source, BlockPlace place, MetadataBlocks& blocks);

}  // namespace brindle
