#pragma once

// WMA keeps its values in several tables, of which the later ones may stand first in the file. Any thread.

#include <taglib/asffile.h>

#include "metadata/audio_module/bounded_stream.h"

namespace brindle::audio_module {

/// Puts the values that bear one name in order: those of the main table before those of the tables that were added to
/// the format later, for more values and longer ones.
void order_asf_values(TagLib::ASF::File& file, BoundedStream& stream);

}  // namespace brindle::audio_module
