#pragma once

// What the tag library leaves out of its table of properties, although files have it, or puts there in the wrong order.
// Any thread.

#include <taglib/asffile.h>
#include <taglib/tfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/tstringlist.h>

#include "metadata/audio_module/audio_module.h"
#include "metadata/audio_module/bounded_stream.h"

namespace brindle::audio_module {

/// The values of an attribute under other names than the library knows, for WMA and WAV; none for other kinds.
TagLib::StringList further_values(const TagLib::File& file, Attribute attribute);

/// Of a song that has two tags, the properties of the second: APE behind MP3, ID3 before FLAC.
TagLib::PropertyMap further_properties(TagLib::File& file);

/// Puts the values of a WMA file that bear one name in order: those of the main table, which may stand last in the
/// file, before those of the tables that were added to the format later, for more values and longer ones.
void order_asf_values(TagLib::ASF::File& file, BoundedStream& stream);

/// Has texts whose character set nobody says read as UTF-8 where that is what they are, else as Windows Latin 1: those
/// of ID3 version 1 and of WAV. To be called before the first file is opened; later calls change nothing.
void read_unmarked_texts();

}  // namespace brindle::audio_module
