#pragma once

// The seam between the program and its image module: a shared library of our own that holds everything which needs the
// metadata library. The program opens it when a name first asks for a picture's metadata, so that starting the program
// costs nothing. Only plain C types cross the seam, and no exception does.

#include <cstddef>
#include <cstdint>

namespace brindle::image_module {

inline constexpr const char* file_name = "brindle_image.so";

/// Raised with every change of what crosses the seam.
inline constexpr std::uint32_t revision = 2;

/// What a reported value is. Data sets of IPTC are reported as iptc_base + record × 256 + number.
enum Tag : std::uint32_t {
  date_time_original,  ///< texts, as bytes of whatever character set the camera chose
  date_time,
  make,
  model,
  user_comment,       ///< eight bytes of character set, then the text
  pixel_x_dimension,  ///< decimal text, as the camera wrote it down
  pixel_y_dimension,
  pixel_width,  ///< decimal text, of the image itself
  pixel_height,
  big_endian,  ///< "1" when units of two bytes have the high byte first
  xmp_packet,  ///< UTF-8, mostly
  iptc_base = 0x10000,
};

/// Takes the values, in the order in which they stand in the file. `bytes` is valid during the call. Must not throw.
struct Sink {
  void* context;
  void (*value)(void* context, std::uint32_t tag, const char* bytes, std::size_t size);
};

/// The functions of the library, by their unmangled names. Each reports what can be read and leaves out the rest; none
/// fails, throws or keeps anything. Any thread, any number of threads.
extern "C" {
/// `data` is what follows "Exif\0\0": a TIFF structure, which is changed. Reports the tags that have their bit in
/// `wanted`: 1 << make, and so on; perhaps others.
void brindle_decode_exif(unsigned char* data, std::size_t size, std::uint32_t wanted, const Sink* sink);
/// `data` is what follows "Photoshop 3.0\0" in all such segments: image resources, one of which holds IPTC.
void brindle_decode_photoshop(const unsigned char* data, std::size_t size, const Sink* sink);
/// A whole image of any kind. `descriptor` is a regular file of `size` bytes, open for reading; it stays open.
void brindle_read_image(int descriptor, std::uint64_t size, const Sink* sink);
}

}  // namespace brindle::image_module
