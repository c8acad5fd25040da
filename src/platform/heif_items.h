#pragma once

// The parts of a HEIC or AVIF file that hold metadata, found by its table of items. Pure; any thread.

#include "platform/metadata_blocks.h"
#include "platform/regular_file.h"

namespace brindle {

/// Collects EXIF, XMP and the largest picture's size. False when the file is not of this kind: other readers may know
/// it. What is damaged is left out; tables above 16 MiB and items above 4 MiB are not looked at.
bool read_heif_items(const RegularFile& file, MetadataBlocks& blocks);

}  // namespace brindle
