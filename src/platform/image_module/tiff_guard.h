#pragma once

// A TIFF structure may say of hundreds of values that each is the whole file, and the metadata library copies every
// value it finds: ten megabytes become five gigabytes. So what no name needs is crossed out before the library looks.

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::image_module {

/// Empties the values that are too large to be of interest, and takes away the makers' private notes, whose form only
/// the library knows. Anything but a TIFF structure stays as it is. Pure; bounded time.
void trim_tiff(unsigned char* data, std::size_t size);

/// As trim_tiff, and leaves only the entries with the given tags, in the first directory and in those that `tags` lead
/// to: the library makes several objects for each entry that it sees.
void keep_in_tiff(unsigned char* data, std::size_t size, std::span<const std::uint16_t> tags);

}  // namespace brindle::image_module
