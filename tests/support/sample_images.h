#pragma once

// Small image files of every kind, made byte by byte, so that tests need no other program and know every byte.

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace brindle::test {

inline std::string number_bytes(std::uint64_t value, std::size_t size, bool big_endian = true) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) {
    bytes[big_endian ? size - 1 - i : i] = static_cast<char>(value >> (8 * i) & 0xFFU);
  }
  return bytes;
}

/// A TIFF structure: a first directory, and (when it has any entry) an EXIF directory below it.
struct SampleTiff {
  struct Entry {
    unsigned tag;
    unsigned type;  ///< 2 text, 3 and 4 numbers of two and four bytes, 7 bytes
    std::string value;
  };
  std::vector<Entry> image;
  std::vector<Entry> exif;
  bool big_endian = true;

  SampleTiff& text(unsigned tag, const std::string& value) { return add(tag, 2, value + '\0'); }
  SampleTiff& shorts(unsigned tag, unsigned value) { return add(tag, 3, number_bytes(value, 2, big_endian)); }
  SampleTiff& bytes(unsigned tag, const std::string& value) { return add(tag, 7, value); }
  SampleTiff& add(unsigned tag, unsigned type, const std::string& value) {
    const bool is_exif = tag >= 0x9000 && tag < 0xB000;
    (is_exif ? exif : image).push_back({tag, type, value});
    return *this;
  }

  std::string build() const {
    std::vector<Entry> first = image;
    if (!exif.empty()) first.push_back({0x8769, 4, std::string(4, '\0')});
    const std::size_t below = 8 + directory(first, 8).size();
    if (!exif.empty()) first.back().value = number_bytes(below, 4, big_endian);
    std::string file = big_endian ? std::string("MM\0*", 4) : std::string("II*\0", 4);
    file += number_bytes(8, 4, big_endian) + directory(first, 8);
    return exif.empty() ? file : file + directory(exif, below);
  }

 private:
  std::string directory(const std::vector<Entry>& entries, std::size_t start) const {
    std::string table = number_bytes(entries.size(), 2, big_endian);
    std::string values;
    const std::size_t behind = start + 2 + 12 * entries.size() + 4;
    for (const Entry& entry : entries) {
      const std::size_t unit = entry.type == 3 ? 2 : entry.type == 4 ? 4 : 1;
      table += number_bytes(entry.tag, 2, big_endian) + number_bytes(entry.type, 2, big_endian) +
               number_bytes(entry.value.size() / unit, 4, big_endian);
      if (entry.value.size() <= 4) {
        table += entry.value + std::string(4 - entry.value.size(), '\0');
      } else {
        table += number_bytes(behind + values.size(), 4, big_endian);
        values += entry.value;
      }
    }
    return table + std::string(4, '\0') + values;
  }
};

/// IPTC data sets: (record, number) and value, in order.
using SampleIptc = std::vector<std::pair<std::pair<int, int>, std::string>>;

inline std::string iptc_block(const SampleIptc& sets) {
  std::string block;
  for (const auto& [number, value] : sets) {
    block += '\x1C' + number_bytes(static_cast<unsigned>(number.first), 1) +
             number_bytes(static_cast<unsigned>(number.second), 1) + number_bytes(value.size(), 2) + value;
  }
  return block;
}

/// What a sample holds; whatever is empty is left out.
struct SampleMetadata {
  std::string exif;
  std::string xmp;
  std::string iptc;
};

inline std::string jpeg_segment(int marker, const std::string& content) {
  return "\xFF" + number_bytes(static_cast<unsigned>(marker), 1) + number_bytes(content.size() + 2, 2) + content;
}

inline std::string photoshop_block(const std::string& iptc) {
  return std::string("Photoshop 3.0\0", 14) + "8BIM" + number_bytes(0x0404, 2) + std::string(2, '\0') +
         number_bytes(iptc.size(), 4) + iptc + std::string(iptc.size() % 2, '\0');
}

/// 640 x 480.
inline std::string sample_jpeg(const SampleMetadata& metadata) {
  std::string file = "\xFF\xD8" + jpeg_segment(0xE0, std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
  if (!metadata.exif.empty()) file += jpeg_segment(0xE1, std::string("Exif\0\0", 6) + metadata.exif);
  if (!metadata.xmp.empty())
    file += jpeg_segment(0xE1, std::string("http://ns.adobe.com/xap/1.0/\0", 29) + metadata.xmp);
  if (!metadata.iptc.empty()) file += jpeg_segment(0xED, photoshop_block(metadata.iptc));
  file += jpeg_segment(0xC0, '\x08' + number_bytes(480, 2) + number_bytes(640, 2) + std::string("\1\1\x11\0", 4));
  return file + jpeg_segment(0xDA, std::string("\1\1\0\0\x3F\0", 6)) + std::string(64, '\x55') + "\xFF\xD9";
}

inline std::string png_chunk(const std::string& type, const std::string& content) {
  std::uint32_t sum = 0xFFFFFFFFU;
  for (const char byte : type + content) {
    sum ^= static_cast<unsigned char>(byte);
    for (int i = 0; i < 8; ++i) sum = sum >> 1U ^ (0xEDB88320U & (0U - (sum & 1U)));
  }
  return number_bytes(content.size(), 4) + type + content + number_bytes(~sum, 4);
}

inline std::string sample_png(const SampleMetadata& metadata) {
  std::string file = "\x89PNG\r\n\x1A\n" +
                     png_chunk("IHDR", number_bytes(640, 4) + number_bytes(480, 4) + std::string("\x08\0\0\0\0", 5));
  if (!metadata.exif.empty()) file += png_chunk("eXIf", metadata.exif);
  if (!metadata.xmp.empty()) file += png_chunk("iTXt", std::string("XML:com.adobe.xmp\0\0\0\0\0", 22) + metadata.xmp);
  return file + png_chunk("IDAT", "") + png_chunk("IEND", "");
}

/// As older programs write metadata into PNG: as text, in hexadecimal digits.
inline std::string raw_profile(const std::string& kind, const std::string& bytes) {
  std::string text = "\n" + kind + "\n" + std::to_string(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % 36 == 0) text += '\n';
    const auto byte = static_cast<unsigned char>(bytes[i]);
    text += {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
  }
  return png_chunk("tEXt", "Raw profile type " + kind + '\0' + text + "\n");
}

inline std::string riff_chunk(const std::string& type, const std::string& content) {
  return type + number_bytes(content.size(), 4, false) + content + std::string(content.size() % 2, '\0');
}

inline std::string sample_webp(const SampleMetadata& metadata) {
  const char flags = static_cast<char>((metadata.exif.empty() ? 0 : 8) + (metadata.xmp.empty() ? 0 : 4));
  std::string chunks =
      riff_chunk("VP8X", flags + std::string(3, '\0') + number_bytes(639, 3, false) + number_bytes(479, 3, false));
  chunks += riff_chunk("VP8L", std::string("\x2F\x7F\xC2\x77\0", 5));
  if (!metadata.exif.empty()) chunks += riff_chunk("EXIF", metadata.exif);
  if (!metadata.xmp.empty()) chunks += riff_chunk("XMP ", metadata.xmp);
  return riff_chunk("RIFF", "WEBP" + chunks);
}

inline std::string box(const std::string& type, const std::string& content) {
  return number_bytes(content.size() + 8, 4) + type + content;
}

/// How a HEIC file says where its items lie.
struct SampleHeifLayout {
  unsigned version = 0;
  unsigned base_size = 0;  ///< bytes of the base offset
  bool in_table = false;   ///< the items stand in the table itself (version 1 and later)
};

inline std::string sample_heif(const SampleMetadata& metadata, const SampleHeifLayout& layout = {}) {
  const std::string exif = number_bytes(0, 4) + metadata.exif;
  const auto location = [&layout](unsigned id, std::size_t offset, std::size_t size) {
    std::string entry = number_bytes(id, 2);
    if (layout.version > 0) entry += number_bytes(layout.in_table ? 1 : 0, 2);
    const std::size_t base = layout.base_size > 0 ? offset - 3 : 0;
    entry += number_bytes(0, 2) + number_bytes(base, layout.base_size) + number_bytes(1, 2);
    return entry + number_bytes(offset - base, 4) + number_bytes(size, 4);
  };
  const auto table = [&](std::size_t start) {
    const std::string items =
        box("infe", number_bytes(2U << 24U, 4) + number_bytes(1, 2) + number_bytes(0, 2) + std::string("Exif\0", 5)) +
        box("infe", number_bytes(2U << 24U, 4) + number_bytes(2, 2) + number_bytes(0, 2) + "mime" + '\0' +
                        std::string("application/rdf+xml\0\0", 21));
    const std::string sizes = number_bytes(0x44, 1) + number_bytes(layout.base_size << 4U, 1);
    std::string content = number_bytes(0, 4) + box("iinf", number_bytes(0, 4) + number_bytes(2, 2) + items);
    content += box("iloc", number_bytes(layout.version << 24U, 4) + sizes + number_bytes(2, 2) +
                               location(1, start, exif.size()) + location(2, start + exif.size(), metadata.xmp.size()));
    content +=
        box("iprp", box("ipco", box("ispe", number_bytes(0, 4) + number_bytes(64, 4) + number_bytes(64, 4)) +
                                    box("ispe", number_bytes(0, 4) + number_bytes(640, 4) + number_bytes(480, 4))));
    if (layout.in_table) content += box("idat", exif + metadata.xmp);
    return box("meta", content);
  };
  const std::string type = box("ftyp", "heic" + number_bytes(0, 4) + "mif1heic");
  const std::size_t data_start = type.size() + table(100).size() + 8;
  const std::string body = layout.in_table ? table(0) : table(data_start) + box("mdat", exif + metadata.xmp);
  return type + body;
}

inline std::string photoshop_resource(unsigned id, const std::string& content) {
  return "8BIM" + number_bytes(id, 2) + std::string(2, '\0') + number_bytes(content.size(), 4) + content +
         std::string(content.size() % 2, '\0');
}

/// Photoshop's own kind.
inline std::string sample_psd(const SampleMetadata& metadata) {
  std::string resources = photoshop_resource(0x03ED, std::string(15, '\1'));
  if (!metadata.iptc.empty()) resources += photoshop_resource(0x0404, metadata.iptc);
  if (!metadata.exif.empty()) resources += photoshop_resource(0x0422, metadata.exif);
  if (!metadata.xmp.empty()) resources += photoshop_resource(0x0424, metadata.xmp);
  return "8BPS" + number_bytes(1, 2) + std::string(6, '\0') + number_bytes(3, 2) + number_bytes(480, 4) +
         number_bytes(640, 4) + number_bytes(0x80003, 4) + number_bytes(0, 4) + number_bytes(resources.size(), 4) +
         resources + number_bytes(0, 4);
}

/// JPEG 2000; with `is_jxl` the same blocks in the boxes of JPEG XL.
inline std::string sample_jp2(const SampleMetadata& metadata, bool is_jxl = false) {
  const std::string xmp_id = "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC";
  const std::string iptc_id = "\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38";
  std::string file = box(is_jxl ? "JXL " : "jP  ", "\r\n\x87\n") + box("ftyp", is_jxl ? "jxl " : "jp2 ");
  if (is_jxl) return file + box("Exif", number_bytes(0, 4) + metadata.exif) + box("xml ", metadata.xmp);
  file += box("jp2h", box("ihdr", number_bytes(480, 4) + number_bytes(640, 4) + std::string(6, '\1')));
  file += box("uuid", "JpgTiffExif->JP2" + metadata.exif) + box("uuid", xmp_id + metadata.xmp);
  return file + box("uuid", iptc_id + metadata.iptc);
}

/// Canon's raw files, of which the newer ones keep the EXIF directory in a structure of its own.
inline std::string sample_cr3(const SampleTiff& tiff, const SampleMetadata& metadata) {
  const std::string id = "\x85\xC0\xB6\x87\x82\x0F\x11\xE0\x81\x11\xF4\xCE\x46\x2B\x6A\x48";
  const std::string xmp_id = "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC";
  SampleTiff first{tiff.image, {}, tiff.big_endian};
  SampleTiff second{tiff.exif, {}, tiff.big_endian};
  const std::string blocks = box("CNCV", "Canon") + box("CMT1", first.build()) + box("CMT2", second.build());
  return box("ftyp", "crx " + number_bytes(1, 4) + "crx isom") + box("moov", box("uuid", id + blocks)) +
         box("uuid", xmp_id + metadata.xmp) + number_bytes(1, 4) + "mdat" + number_bytes(20, 8) + "data";
}

inline std::string sample_crw() {
  struct Value {
    unsigned tag;
    std::string bytes;
  };
  const auto heap = [](const std::vector<Value>& values) {
    std::string contents;
    std::string table = number_bytes(values.size(), 2, false);
    for (const Value& value : values) {
      table += number_bytes(value.tag, 2, false) + number_bytes(value.bytes.size(), 4, false) +
               number_bytes(contents.size(), 4, false);
      contents += value.bytes;
    }
    return contents + table + number_bytes(contents.size(), 4, false);
  };
  const std::string camera("Canon\0EOS 5D\0", 13);
  const std::string size = number_bytes(640, 4, false) + number_bytes(480, 4, false) + std::string(20, '\0');
  const std::string time = number_bytes(1242555630, 4, false) + std::string(8, '\0');  // 2009-05-17 10:20:30
  const std::string properties = heap({{0x2807, heap({{0x080A, camera}})}, {0x1810, size}, {0x180E, time}});
  return "II" + number_bytes(26, 4, false) + "HEAPCCDR" + std::string(12, '\0') +
         heap({{0x2007, std::string(64, 'r')}, {0x300A, properties}});
}

/// A TIFF file holds its metadata in its directory.
inline std::string sample_tiff(SampleTiff tiff, const SampleMetadata& metadata) {
  if (!metadata.xmp.empty()) tiff.add(0x02BC, 1, metadata.xmp);
  if (!metadata.iptc.empty()) tiff.add(0x83BB, 7, metadata.iptc);
  tiff.shorts(0x0100, 640).shorts(0x0101, 480);
  return tiff.build();
}

/// Minolta's raw files.
inline std::string sample_mrw(const SampleTiff& tiff, const SampleMetadata& metadata) {
  const auto block = [](const std::string& name, const std::string& content) {
    return std::string(1, '\0') + name + number_bytes(content.size(), 4) + content;
  };
  return block("MRM", block("PRD", std::string(24, '\1')) + block("TTW", sample_tiff(tiff, metadata)));
}

inline std::string xmp_packet(const std::string& properties) {
  return "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'>"
         "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
         "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
         " xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/' xmlns:xmpRights='http://ns.adobe.com/xap/1.0/rights/'"
         " xmlns:Iptc4xmpCore='http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/' " +
         properties + "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end='w'?>";
}

/// A new file each time: overwriting one makes some disks wait until the old bytes are safe.
inline void write_file(const std::string& path, const std::string& bytes) {
  std::remove(path.c_str());
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace brindle::test
