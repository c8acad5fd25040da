#pragma once

// Frames of ID3v2 as they lie in the tag. Pure; any thread.

#include <taglib/tbytevector.h>

namespace brindle::audio_module {

/// The frames of a tag of version 2, 3 or 4 without those that hold nothing, filled up with padding to the same size:
/// the library takes an empty frame for the end of the tag. What is no frame ends the search, and stays.
TagLib::ByteVector without_empty_frames(const TagLib::ByteVector& frames, unsigned int version);

}  // namespace brindle::audio_module
