#include "metadata/audio_module/asf_order.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace brindle::audio_module {
namespace {

// Of sixteen bytes each; the first four tell them apart.
constexpr std::string_view main_table = "\x40\xA4\xD0\xD2";
constexpr std::string_view later_tables = "\xB5\x03\xBF\x5F";
constexpr Offset head_size = 24;
constexpr Offset first_object = 30;
constexpr int object_limit = 64;
constexpr unsigned int record_limit = 4096;

using Counts = std::map<TagLib::String, unsigned int>;

TagLib::ByteVector read_at(BoundedStream& stream, Offset offset, BlockSize count) {
  stream.seek(offset);
  return stream.readBlock(count);
}

unsigned int short_at(BoundedStream& stream, Offset offset) {
  const TagLib::ByteVector bytes = read_at(stream, offset, 2);
  return bytes.size() < 2 ? 0 : bytes.toUShort(false);
}

// Each record: the name's size and the name, the value's type, its size, and the value.
Counts names_in_main_table(BoundedStream& stream, Offset at) {
  Counts counts;
  const unsigned int records = std::min(short_at(stream, at), record_limit);
  at += 2;
  for (unsigned int i = 0; i < records && at < stream.length(); ++i) {
    const unsigned int size = short_at(stream, at);
    const TagLib::String name(read_at(stream, at + 2, size), TagLib::String::UTF16LE);
    ++counts[name.to8Bit(true).c_str()];
    const Offset value = at + 2 + static_cast<Offset>(size) + 2;
    at = value + 2 + static_cast<Offset>(short_at(stream, value));
  }
  return counts;
}

/// What the main table holds of each name, when the later tables stand before it.
Counts misplaced_names(BoundedStream& stream) {
  bool has_later_tables = false;
  Offset at = first_object;
  for (int i = 0; i < object_limit && at < stream.length(); ++i) {
    const TagLib::ByteVector head = read_at(stream, at, head_size);
    if (head.size() < head_size) break;
    const std::string_view kind(head.data(), 4);
    if (kind == main_table) return has_later_tables ? names_in_main_table(stream, at + head_size) : Counts();
    has_later_tables = has_later_tables || kind == later_tables;
    const long long size = head.toLongLong(16U, false);
    if (size < head_size || size > stream.length() - at) break;
    at += static_cast<Offset>(size);
  }
  return {};
}

void put_last_first(TagLib::ASF::AttributeList& values, unsigned int count) {
  std::vector<TagLib::ASF::Attribute> ordered(values.begin(), values.end());
  std::rotate(ordered.begin(), ordered.end() - count, ordered.end());
  values.clear();
  for (const TagLib::ASF::Attribute& value : ordered) values.append(value);
}

}  // namespace

void order_asf_values(TagLib::ASF::File& file, BoundedStream& stream) {
  TagLib::ASF::AttributeListMap& all = file.tag()->attributeListMap();
  const bool any = std::any_of(all.begin(), all.end(), [](const auto& each) { return each.second.size() > 1; });
  if (!any) return;
  const Counts counts = misplaced_names(stream);
  for (auto& [name, values] : all) {
    const auto found = counts.find(name);
    if (found != counts.end() && found->second < values.size()) put_last_first(values, found->second);
  }
}

}  // namespace brindle::audio_module
