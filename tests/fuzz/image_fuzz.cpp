// Any bytes as an image file: no crash, no leak, no hang, whatever they are.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "metadata/image_properties.h"
#include "metadata/xmp_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int file = ::memfd_create("image", MFD_CLOEXEC);
  static const std::string path = "/proc/self/fd/" + std::to_string(file);
  if (::ftruncate(file, 0) != 0 || ::pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) return 0;
  brindle::camera_values(brindle::read_image_properties(path, {.exif = true, .iptc = true, .size = true}));
  brindle::XmpEntries entries;
  entries.wanted.fill(true);
  brindle::find_xmp_texts(path, entries);
  return 0;
}
