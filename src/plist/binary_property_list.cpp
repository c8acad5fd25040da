// Binary property lists ("bplist00"): a header of eight bytes; the objects, each a marker byte (kind in the high half,
// size in the low half) and its content; a table of the objects' offsets; a trailer of 32 bytes that gives the sizes of
// offsets and of references, the number of objects, which of them is the root, and where the table is. All numbers are
// big-endian. An array or dictionary refers to its members by their numbers, so several may share one.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/translation.h"
#include "plist/property_list.h"
#include "plist/property_value.h"
#include "plist/scalar_text.h"

namespace brindle {
namespace {

constexpr std::string_view header = "bplist00";
constexpr std::size_t trailer_size = 32;

/// The high half of a marker byte.
enum class Kind : std::uint8_t {
  simple = 0x0,  ///< 0x08 false, 0x09 true
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  ascii = 0x5,
  utf16 = 0x6,
  uid = 0x8,
  array = 0xA,
  dictionary = 0xD,
};

constexpr std::uint8_t false_marker = 0x08;
constexpr std::uint8_t true_marker = 0x09;
/// In the low half of a marker: the size follows as an integer object.
constexpr std::uint8_t size_follows = 0xF;

// Reading

std::uint64_t number_at(std::string_view bytes) {
  std::uint64_t number = 0;
  for (const char byte : bytes) number = number << 8U | static_cast<unsigned char>(byte);
  return number;
}

// 128 bits with sign: what a 64-bit number with or without sign has as its extension, else a real.
PropertyValue wide_integer(std::uint64_t high, std::uint64_t low) {
  const auto number = static_cast<std::int64_t>(low);
  if (high == (number < 0 ? std::numeric_limits<std::uint64_t>::max() : 0)) return number;
  return std::ldexp(static_cast<double>(static_cast<std::int64_t>(high)), 64) + static_cast<double>(low);
}

/// Where an object's content starts, and how many bytes or members it has.
struct Extent {
  std::size_t start = 0;
  std::size_t count = 0;
};

// Every function but read() answers none when it has set the error.
class BinaryReader {
 public:
  BinaryReader(std::string_view bytes, const PropertyListBudget& budget) : bytes_(bytes), budget_(budget) {}

  std::optional<PropertyValue> read() {
    if (!bytes_.starts_with(header)) return fail("it is of a version of the binary form that is not known here");
    if (bytes_.size() < header.size() + trailer_size) return fail("it is cut off");
    const std::string_view trailer = bytes_.substr(bytes_.size() - trailer_size);
    offset_size_ = number_at(trailer.substr(6, 1));
    reference_size_ = number_at(trailer.substr(7, 1));
    object_count_ = number_at(trailer.substr(8, 8));
    table_ = number_at(trailer.substr(24, 8));
    const std::size_t end = bytes_.size() - trailer_size;
    const bool sizes_fit = offset_size_ >= 1 && offset_size_ <= 8 && reference_size_ >= 1 && reference_size_ <= 8;
    if (!sizes_fit || table_ < header.size() || table_ > end || object_count_ > (end - table_) / offset_size_) {
      return fail("it is cut off, or its trailer is damaged");
    }
    return object(number_at(trailer.substr(16, 8)));
  }

  const std::string& error() const { return error_; }

 private:
  std::nullopt_t fail(std::string_view reason) {
    if (error_.empty()) error_ = translated(reason);
    return std::nullopt;
  }
  std::nullopt_t damaged() { return fail("one of its objects is damaged"); }

  // Bytes that lie among the objects; none otherwise.
  std::optional<std::string_view> slice(std::size_t start, std::size_t size) {
    if (start > table_ || size > table_ - start) return damaged();
    return bytes_.substr(start, size);
  }

  std::optional<PropertyValue> object(std::uint64_t number) {
    if (number >= object_count_) return fail("it refers to an object that it does not hold");
    if (!budget_.take_values(1)) return fail("there are more values than can be read");
    const std::uint64_t offset = number_at(bytes_.substr(table_ + number * offset_size_, offset_size_));
    if (offset < header.size() || offset >= table_) return damaged();
    const auto marker = static_cast<std::uint8_t>(bytes_[offset]);
    const auto kind = static_cast<Kind>(marker >> 4U);
    if (kind == Kind::array || kind == Kind::dictionary) return container(number, offset);
    if (kind == Kind::data || kind == Kind::ascii || kind == Kind::utf16) return sequence(kind, offset);
    return scalar(kind, marker, offset + 1);
  }

  std::optional<PropertyValue> scalar(Kind kind, std::uint8_t marker, std::size_t start) {
    if (kind == Kind::simple) {
      if (marker == false_marker || marker == true_marker) return marker == true_marker;
      return fail("it holds an object of a kind that is not known here");
    }
    const std::uint8_t low = marker & 0xFU;
    if (kind == Kind::uid) return reference(start, std::size_t{low} + 1);
    if (low > 4) return damaged();
    const std::size_t size = std::size_t{1} << low;
    if (kind == Kind::integer) return integer(start, size);
    if (kind == Kind::real) return real(start, size);
    if (kind == Kind::date && size == 8) return date(start);
    return fail("it holds an object of a kind that is not known here");
  }

  // Up to four bytes have no sign.
  std::optional<PropertyValue> integer(std::size_t start, std::size_t size) {
    const auto content = slice(start, size);
    if (!content) return std::nullopt;
    if (size == 16) return wide_integer(number_at(content->substr(0, 8)), number_at(content->substr(8)));
    return static_cast<std::int64_t>(number_at(*content));
  }

  std::optional<PropertyValue> real(std::size_t start, std::size_t size) {
    const auto content = slice(start, size);
    if (!content || (size != 4 && size != 8)) return damaged();
    const std::uint64_t bits = number_at(*content);
    if (size == 4) return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    return std::bit_cast<double>(bits);
  }

  std::optional<PropertyValue> date(std::size_t start) {
    const auto content = slice(start, 8);
    const auto moment = content ? date_of_reference_seconds(std::bit_cast<double>(number_at(*content))) : std::nullopt;
    return moment ? std::optional<PropertyValue>(*moment) : fail("it holds a date out of range");
  }

  std::optional<PropertyValue> reference(std::size_t start, std::size_t size) {
    const auto content = size > 8 ? std::nullopt : slice(start, size);
    if (!content || number_at(*content) > std::numeric_limits<std::int64_t>::max()) return damaged();
    return PropertyUid{number_at(*content)};
  }

  // The size is in the marker, or in an integer behind it.
  std::optional<Extent> extent(std::size_t offset) {
    const std::uint8_t low = static_cast<std::uint8_t>(bytes_[offset]) & 0xFU;
    if (low != size_follows) return Extent{offset + 1, low};
    const auto marker = slice(offset + 1, 1);
    if (!marker) return std::nullopt;
    const auto code = static_cast<std::uint8_t>(marker->front());
    if (code < 0x10 || code > 0x13) return damaged();
    const std::size_t size = std::size_t{1} << (code & 0xFU);
    const auto content = slice(offset + 2, size);
    if (!content) return std::nullopt;
    return Extent{offset + 2 + size, number_at(*content)};
  }

  std::optional<PropertyValue> sequence(Kind kind, std::size_t offset) {
    const std::optional<Extent> where = extent(offset);
    const std::size_t width = kind == Kind::utf16 ? 2 : 1;
    if (!where || where->count > bytes_.size()) return damaged();
    const auto content = slice(where->start, where->count * width);
    if (!content) return std::nullopt;
    if (!budget_.take_bytes(content->size() * (kind == Kind::ascii ? 2 : 1))) {
      return fail("its texts and data are too long");
    }
    if (kind == Kind::data) return PropertyValue::Data(content->begin(), content->end());
    return kind == Kind::ascii ? ascii(*content) : utf16(*content);
  }

  std::optional<PropertyValue> ascii(std::string_view content) {
    const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (!std::ranges::all_of(content, is_ascii)) return damaged();
    return std::u16string(content.begin(), content.end());
  }

  static std::optional<PropertyValue> utf16(std::string_view content) {
    std::u16string text(content.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(number_at(content.substr(2 * i, 2)));
    return text;
  }

  // Recursion ends at the depth limit, and so does a list that holds itself.
  std::optional<PropertyValue> container(std::uint64_t number, std::size_t offset) {
    if (std::ranges::find(open_, number) != open_.end()) return fail("it holds itself");
    if (open_.size() == property_list_depth_limit) return fail("its values are nested too deeply");
    const bool is_array = static_cast<std::uint8_t>(bytes_[offset]) >> 4U == static_cast<unsigned>(Kind::array);
    const std::optional<Extent> where = extent(offset);
    const std::size_t width = reference_size_ * (is_array ? 1 : 2);
    if (!where || where->count > bytes_.size() / width) return damaged();
    const auto references = slice(where->start, where->count * width);
    if (!references) return std::nullopt;
    open_.push_back(number);
    std::optional<PropertyValue> value = is_array ? array(*references) : dictionary(*references);
    open_.pop_back();
    return value;
  }

  std::uint64_t reference_at(std::string_view references, std::size_t i) const {
    return number_at(references.substr(i * reference_size_, reference_size_));
  }

  std::optional<PropertyValue> array(std::string_view references) {
    PropertyValue::Array members;
    for (std::size_t i = 0; i < references.size() / reference_size_; ++i) {
      std::optional<PropertyValue> member = object(reference_at(references, i));
      if (!member) return std::nullopt;
      members.push_back(std::move(*member));
    }
    return members;
  }

  // First all keys, then all values.
  std::optional<PropertyValue> dictionary(std::string_view references) {
    std::vector<PropertyEntry> pairs;
    const std::size_t count = references.size() / reference_size_ / 2;
    for (std::size_t i = 0; i < count; ++i) {
      const std::optional<PropertyValue> key = object(reference_at(references, i));
      const auto* text = key ? key->get_if<std::u16string>() : nullptr;
      if (!text) return fail("a key of it is no text");
      std::optional<PropertyValue> value = object(reference_at(references, count + i));
      if (!value) return std::nullopt;
      pairs.push_back({*text, std::move(*value)});
    }
    return dictionary_of_pairs(std::move(pairs));
  }

  std::string_view bytes_;
  std::size_t offset_size_ = 0;
  std::size_t reference_size_ = 0;
  std::uint64_t object_count_ = 0;
  std::size_t table_ = 0;
  PropertyListBudget budget_;
  std::vector<std::uint64_t> open_;
  std::string error_;
};

// Writing

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

Result<PropertyValue> read_binary_property_list(std::string_view bytes, const PropertyListBudget& budget) {
  BinaryReader reader(bytes, budget);
  std::optional<PropertyValue> value = reader.read();
  if (!value) return Status(reader.error());
  return std::move(*value);
}

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
