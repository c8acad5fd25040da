#pragma once

// CRW, the raw files of Canon's first cameras. Any thread.

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Collects maker, model, date, comment and size, which the file keeps in a form of its own.
void read_canon_heap(ByteSource& source, MetadataBlocks& blocks);

}  // namespace brindle
