#pragma once

// What versions 1 and 2 of the tag library call differently.

#include <taglib/taglib.h>

#include <cstddef>

namespace brindle::audio_module {

#if TAGLIB_MAJOR_VERSION >= 2
using Offset = TagLib::offset_t;  ///< into a file, in bytes; signed
using BlockSize = std::size_t;
using Start = Offset;  ///< of bytes to be replaced
#else
using Offset = long;
using BlockSize = unsigned long;
using Start = unsigned long;
#endif

}  // namespace brindle::audio_module
