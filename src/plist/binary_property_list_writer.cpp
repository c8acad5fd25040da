#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <unordered_map>
#include <vector>

#include "plist/binary_property_list.h"
#include "plist/binary_property_list_format.h"
#include "plist/scalar_text.h"

namespace brindle {
namespace {

using binary_list::false_marker;
using binary_list::header;
using binary_list::Kind;
using binary_list::size_follows;
using binary_list::true_marker;

std::size_t bytes_for(std::uint64_t number) {
  if (number <= 0xFF) return 1;
  if (number <= 0xFFFF) return 2;
  return number <= 0xFFFF'FFFF ? 4 : 8;
}

void append_number(std::string& bytes, std::uint64_t number, std::size_t size) {
  for (std::size_t i = size; i > 0; --i) bytes += static_cast<char>(number >> (i - 1) * 8U & 0xFFU);
}

void append_marker(std::string& bytes, Kind kind, std::size_t low) {
  bytes += static_cast<char>(static_cast<unsigned>(kind) << 4U | low);
}

void append_integer(std::string& bytes, std::int64_t number) {
  const auto bits = static_cast<std::uint64_t>(number);
  const std::size_t size = bytes_for(bits);  // those below 0 take eight
  append_marker(bytes, Kind::integer, static_cast<std::size_t>(std::countr_zero(size)));
  append_number(bytes, bits, size);
}

void append_extent(std::string& bytes, Kind kind, std::size_t count) {
  append_marker(bytes, kind, std::min<std::size_t>(count, size_follows));
  if (count >= size_follows) append_integer(bytes, static_cast<std::int64_t>(count));
}

void append_text(std::string& bytes, std::u16string_view text) {
  const bool is_ascii = std::ranges::all_of(text, [](char16_t c) { return c < 0x80; });
  append_extent(bytes, is_ascii ? Kind::ascii : Kind::utf16, text.size());
  for (const char16_t c : text) append_number(bytes, c, is_ascii ? 1 : 2);
}

/// One object of the list: a text, or another value with the numbers of its members.
struct Object {
  const std::u16string* text = nullptr;
  const PropertyValue* value = nullptr;
  std::vector<std::size_t> members;
};

// Numbers the objects of a value. Its recursion goes as deep as the value, which the readers bound.
class Numbering {
 public:
  std::size_t add(const PropertyValue& value) {
    if (const auto* text = value.get_if<std::u16string>()) return add_text(*text);
    const std::size_t number = objects_.size();
    objects_.push_back({nullptr, &value, {}});
    std::vector<std::size_t> members;
    if (const auto* array = value.get_if<PropertyValue::Array>()) {
      for (const PropertyValue& member : *array) members.push_back(add(member));
    } else if (const auto* dictionary = value.get_if<PropertyDictionary>()) {
      for (const PropertyEntry& entry : *dictionary) members.push_back(add_text(entry.key));
      for (const PropertyEntry& entry : *dictionary) members.push_back(add(entry.value));
    }
    objects_[number].members = std::move(members);
    return number;
  }

  const std::vector<Object>& objects() const { return objects_; }

 private:
  std::size_t add_text(const std::u16string& text) {
    const auto [found, is_new] = texts_.try_emplace(text, objects_.size());
    if (is_new) objects_.push_back({&text, nullptr, {}});
    return found->second;
  }

  std::vector<Object> objects_;
  std::unordered_map<std::u16string_view, std::size_t> texts_;
};

class ObjectWriter {
 public:
  ObjectWriter(std::string& bytes, std::size_t reference_size) : bytes_(bytes), reference_size_(reference_size) {}

  void write(const Object& object) {
    if (object.text != nullptr) return append_text(bytes_, *object.text);
    object.value->visit(*this);
    for (const std::size_t member : object.members) append_number(bytes_, member, reference_size_);
  }

  void operator()(const std::u16string& text) { append_text(bytes_, text); }
  void operator()(bool flag) { bytes_ += static_cast<char>(flag ? true_marker : false_marker); }
  void operator()(std::int64_t number) { append_integer(bytes_, number); }
  void operator()(double number) { write_real(Kind::real, number); }
  void operator()(Date date) { write_real(Kind::date, reference_seconds(date)); }
  void operator()(const PropertyValue::Data& data) {
    append_extent(bytes_, Kind::data, data.size());
    bytes_.append(data.begin(), data.end());
  }
  void operator()(const PropertyValue::Array& members) { append_extent(bytes_, Kind::array, members.size()); }
  void operator()(const PropertyDictionary& pairs) { append_extent(bytes_, Kind::dictionary, pairs.size()); }
  void operator()(PropertyUid uid) {
    const std::size_t size = bytes_for(uid.index);
    append_marker(bytes_, Kind::uid, size - 1);
    append_number(bytes_, uid.index, size);
  }

 private:
  void write_real(Kind kind, double number) {
    append_marker(bytes_, kind, 3);
    append_number(bytes_, std::bit_cast<std::uint64_t>(number), 8);
  }

  std::string& bytes_;
  std::size_t reference_size_;
};

}  // namespace

std::string write_binary_property_list(const PropertyValue& value) {
  Numbering numbering;
  numbering.add(value);
  const std::vector<Object>& objects = numbering.objects();
  const std::size_t reference_size = bytes_for(objects.size() - 1);
  std::string bytes(header);
  std::vector<std::size_t> offsets;
  ObjectWriter writer(bytes, reference_size);
  for (const Object& object : objects) {
    offsets.push_back(bytes.size());
    writer.write(object);
  }
  const std::size_t table = bytes.size();
  const std::size_t offset_size = bytes_for(table);
  for (const std::size_t offset : offsets) append_number(bytes, offset, offset_size);
  append_number(bytes, offset_size, 7);  // five unused bytes, a version of 0, the size
  append_number(bytes, reference_size, 1);
  append_number(bytes, objects.size(), 8);
  append_number(bytes, 0, 8);  // the root
  append_number(bytes, table, 8);
  return bytes;
}

}  // namespace brindle
