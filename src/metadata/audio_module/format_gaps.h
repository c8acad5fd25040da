#pragma once

// What the tag library leaves out of its table of properties, although files have it. Any thread.

#include <taglib/tfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/tstringlist.h>

#include "metadata/audio_module/audio_module.h"

namespace brindle::audio_module {

/// The values of an attribute under other names than the library knows, for WMA and WAV; none for other kinds.
TagLib::StringList further_values(const TagLib::File& file, Attribute attribute);

/// Of a song that has two tags, the properties of the second: APE behind MP3, ID3 before FLAC.
TagLib::PropertyMap further_properties(TagLib::File& file);

/// Has texts whose character set nobody says read as UTF-8 where that is what they are, else as Windows Latin 1: those
/// of ID3 version 1 and of WAV. To be called before the first file is opened; later calls change nothing.
void read_unmarked_texts();

}  // namespace brindle::audio_module
