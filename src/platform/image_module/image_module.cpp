#include "platform/image_module/image_module.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exiv2/exiv2.hpp>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/image_module/bounded_io.h"
#include "platform/image_module/tiff_guard.h"
#include "platform/module.h"

namespace brindle::image_module {
namespace {

struct Wanted {
  std::uint16_t number;
  const char* key;
  Tag tag;
};

// The first of two keys for the same value wins: raw files keep the date beside the camera's name.
constexpr std::array<Wanted, 8> wanted_entries = {{{0x9003, "Exif.Photo.DateTimeOriginal", date_time_original},
                                                   {0x9003, "Exif.Image.DateTimeOriginal", date_time_original},
                                                   {0x0132, "Exif.Image.DateTime", date_time},
                                                   {0x010F, "Exif.Image.Make", make},
                                                   {0x0110, "Exif.Image.Model", model},
                                                   {0x9286, "Exif.Photo.UserComment", user_comment},
                                                   {0xA002, "Exif.Photo.PixelXDimension", pixel_x_dimension},
                                                   {0xA003, "Exif.Photo.PixelYDimension", pixel_y_dimension}}};
constexpr std::uint16_t exif_pointer = 0x8769;
constexpr std::size_t block_limit = 4U << 20U;

/// Decodes a structure, of which it leaves nothing but the entries that are wanted.
Exiv2::ByteOrder decode_wanted(Exiv2::ExifData& exif, Exiv2::byte* data, std::uint32_t size, std::uint32_t wanted) {
  std::array<std::uint16_t, wanted_entries.size() + 1> kept = {exif_pointer};
  std::size_t count = 1;
  for (const Wanted& entry : wanted_entries) {
    if ((wanted >> entry.tag & 1U) != 0) kept[count++] = entry.number;
  }
  keep_in_tiff(data, size, {kept.data(), count});
  Exiv2::IptcData no_iptc;
  Exiv2::XmpData no_xmp;
  return Exiv2::TiffParser::decode(exif, no_iptc, no_xmp, data, size);
}

}  // namespace
}  // namespace brindle::image_module

// The library finds the two functions here before its own, wherever it would call them.

// Its XMP reader takes time that grows with the square of the packet, and may run on one thread only. The packet is
// kept as it is, for the program to read.
int Exiv2::XmpParser::decode(Exiv2::XmpData& data, const std::string& packet) {
  data.clear();
  data.setPacket(packet);
  return 0;
}

// What stands in images of any kind goes through the guard.
Exiv2::ByteOrder Exiv2::ExifParser::decode(Exiv2::ExifData& exifData, const Exiv2::byte* pData, std::uint32_t size) {
  if (size > brindle::image_module::block_limit) return Exiv2::invalidByteOrder;
  std::vector<Exiv2::byte> block(pData, pData + size);
  return brindle::image_module::decode_wanted(exifData, block.data(), size, ~0U);
}

namespace brindle::image_module {
namespace {

// No name holds more than 255 bytes; a packet may be large.
constexpr std::size_t value_limit = 32768;
constexpr std::size_t packet_limit = 4U << 20U;
constexpr std::size_t data_set_limit = 4096;

void prepare() {
  static std::once_flag once;
  std::call_once(once, [] {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::enableBMFF(true);
  });
}

void report(const Sink& sink, std::uint32_t tag, std::string_view text) {
  if (!text.empty()) sink.value(sink.context, tag, text.data(), std::min(text.size(), value_limit));
}

// The bytes as they stand in the file wherever the library keeps them.
std::string bytes_of(const Exiv2::Value& value) {
  if (const auto* text = dynamic_cast<const Exiv2::StringValueBase*>(&value)) return text->value_;
  const bool is_date = value.typeId() == Exiv2::date || value.typeId() == Exiv2::time;
  if (!is_date) return value.size() > static_cast<long>(value_limit) ? std::string() : value.toString();
  std::string bytes(32, '\0');
  bytes.resize(static_cast<std::size_t>(value.copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::bigEndian)));
  return bytes;
}

// Directory and number of an entry: the library would put a text together for each that is compared by its key.
using Place = std::pair<int, std::uint16_t>;

std::array<Place, wanted_entries.size()> wanted_places() {
  std::array<Place, wanted_entries.size()> places;
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i] = {Exiv2::ExifKey(wanted_entries[i].key).ifdId(), wanted_entries[i].number};
  }
  return places;
}

void report_exif(const Exiv2::ExifData& data, const Sink& sink) {
  static const std::array<Place, wanted_entries.size()> places = wanted_places();
  std::array<const Exiv2::Exifdatum*, places.size()> found{};
  for (const Exiv2::Exifdatum& datum : data) {
    const auto place = std::find(places.begin(), places.end(), Place(datum.ifdId(), datum.tag()));
    if (place == places.end()) continue;
    const Exiv2::Exifdatum*& first = found[static_cast<std::size_t>(place - places.begin())];
    if (first == nullptr) first = &datum;
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found[i] != nullptr) report(sink, wanted_entries[i].tag, bytes_of(found[i]->value()));
  }
}

void report_iptc(const Exiv2::IptcData& data, const Sink& sink) {
  std::size_t left = data_set_limit;
  for (const Exiv2::Iptcdatum& datum : data) {
    if (left-- == 0) return;
    const auto number = static_cast<std::uint32_t>(datum.record() % 256 * 256 + datum.tag() % 256);
    report(sink, iptc_base + number, bytes_of(datum.value()));
  }
}

void report_packet(const std::string& packet, const Sink& sink) {
  if (packet.empty() || packet.size() > packet_limit) return;
  sink.value(sink.context, xmp_packet, packet.data(), packet.size());
}

void report_image(Exiv2::Image& image, const Sink& sink) {
  if (image.byteOrder() == Exiv2::bigEndian) report(sink, big_endian, "1");
  report_exif(image.exifData(), sink);
  report_iptc(image.iptcData(), sink);
  const std::string& whole = image.xmpPacket();
  report_packet(whole.empty() ? image.xmpData().xmpPacket() : whole, sink);
  if (image.pixelWidth() > 0) report(sink, pixel_width, std::to_string(image.pixelWidth()));
  if (image.pixelHeight() > 0) report(sink, pixel_height, std::to_string(image.pixelHeight()));
}

// Panasonic's raw files are TIFF but for their third byte. The library reads them without maker, model, IPTC and XMP;
// as TIFF they have them, and in the first directory the picture's borders on the sensor.
bool is_panasonic(BoundedIo& io) {
  Exiv2::byte head[4] = {};
  return io.read(head, sizeof head) == sizeof head && std::memcmp(head, "IIU", sizeof head) == 0;
}

long border(const Exiv2::ExifData& exif, std::uint16_t tag) {
  const auto found = exif.findKey(Exiv2::ExifKey(tag, "Image"));
  return found == exif.end() || found->count() == 0 ? 0 : found->toLong();
}

void read_panasonic(BoundedIo& io, const Sink& sink) {
  enum : std::uint16_t { top = 4, left = 5, bottom = 6, right = 7 };
  Exiv2::byte* const data = io.mmap(false);
  data[2] = '*';  // in our copy
  Exiv2::ExifData exif;
  Exiv2::IptcData iptc;
  Exiv2::XmpData xmp;
  Exiv2::TiffParser::decode(exif, iptc, xmp, data, static_cast<std::uint32_t>(io.size()));
  report_exif(exif, sink);
  report_iptc(iptc, sink);
  report_packet(xmp.xmpPacket(), sink);
  const long width = border(exif, right) - border(exif, left);
  const long height = border(exif, bottom) - border(exif, top);
  if (width > 0) report(sink, pixel_width, std::to_string(width));
  if (height > 0) report(sink, pixel_height, std::to_string(height));
}

// A file that breaks the library's rules ends in an exception of one kind or another, and has no values.
template <class Read>
void guarded(Read read) noexcept {
  try {
    prepare();
    read();
  } catch (...) {
  }
}

}  // namespace

extern "C" {

std::uint32_t brindle_module_revision() {
  return revision;
}

void brindle_decode_exif(unsigned char* data, std::size_t size, std::uint32_t wanted, const Sink* sink) {
  guarded([&] {
    if (size > block_limit) return;
    Exiv2::ExifData exif;
    const Exiv2::ByteOrder order = decode_wanted(exif, data, static_cast<std::uint32_t>(size), wanted);
    if (order == Exiv2::bigEndian) report(*sink, big_endian, "1");
    report_exif(exif, *sink);
  });
}

void brindle_decode_photoshop(const unsigned char* data, std::size_t size, const Sink* sink) {
  guarded([&] {
    const Exiv2::byte* record = nullptr;
    std::uint32_t header = 0;
    std::uint32_t length = 0;
    if (Exiv2::Photoshop::locateIptcIrb(data, static_cast<long>(size), &record, &header, &length) != 0) return;
    Exiv2::IptcData iptc;
    if (Exiv2::IptcParser::decode(iptc, record + header, length) == 0) report_iptc(iptc, *sink);
  });
}

void brindle_read_image(int descriptor, std::uint64_t size, const Sink* sink) {
  guarded([&] {
    auto bounded = std::make_unique<BoundedIo>(descriptor, size);
    if (is_panasonic(*bounded)) return read_panasonic(*bounded, *sink);
    Exiv2::BasicIo::AutoPtr io(bounded.release());
    const Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(io);
    if (image.get() == nullptr) return;
    image->readMetadata();
    report_image(*image, *sink);
  });
}

}  // extern "C"

}  // namespace brindle::image_module
