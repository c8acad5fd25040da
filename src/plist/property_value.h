#pragma once

// The values of a property list: what profile files, rule files, the user defaults and keyed archives are made of.
// Plain data; each value owns all that it holds. An object belongs to one thread at a time.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/date.h"

namespace brindle {

class PropertyValue;
struct PropertyEntry;

/// Keys and values in the order in which they were put in.
class PropertyDictionary {
 public:
  PropertyDictionary();
  PropertyDictionary(const PropertyDictionary&);
  PropertyDictionary(PropertyDictionary&&) noexcept;
  PropertyDictionary& operator=(const PropertyDictionary&);
  PropertyDictionary& operator=(PropertyDictionary&&) noexcept;
  ~PropertyDictionary();

  /// The value of a key, or null. Looks at one entry after the other; a walk over all entries is the way to read many.
  const PropertyValue* find(std::u16string_view key) const;
  /// Replaces the value of a key, or appends the pair. Searches like find().
  void set(std::u16string_view key, PropertyValue value);
  /// Appends a pair whose key is not there yet (not checked).
  void append(std::u16string_view key, PropertyValue value);

  std::size_t size() const;
  bool empty() const { return size() == 0; }
  std::vector<PropertyEntry>::const_iterator begin() const;
  std::vector<PropertyEntry>::const_iterator end() const;

  /// Equal when the same pairs stand in the same order.
  bool operator==(const PropertyDictionary& other) const;

 private:
  std::vector<PropertyEntry> entries_;
};

/// A reference to another object of a keyed archive, by its index.
struct PropertyUid {
  std::uint64_t index = 0;
  bool operator==(const PropertyUid&) const = default;
};

class PropertyValue {
 public:
  using Data = std::vector<std::uint8_t>;
  using Array = std::vector<PropertyValue>;
  using Dictionary = PropertyDictionary;

  PropertyValue() = default;  ///< an empty text
  // A value is what it holds, so every kind turns into one by itself.
  // NOLINTBEGIN(google-explicit-constructor)
  PropertyValue(std::u16string text) : value_(std::move(text)) {}
  PropertyValue(std::u16string_view text) : value_(std::u16string(text)) {}
  PropertyValue(const char16_t* text) : value_(std::u16string(text)) {}
  template <std::same_as<bool> B>
  PropertyValue(B flag) : value_(flag) {}
  template <std::integral I>
  requires(!std::same_as<I, bool>) PropertyValue(I number) : value_(static_cast<std::int64_t>(number)) {}
  PropertyValue(double number) : value_(number) {}
  PropertyValue(Date date) : value_(date) {}
  PropertyValue(Data data) : value_(std::move(data)) {}
  PropertyValue(Array members) : value_(std::move(members)) {}
  PropertyValue(Dictionary dictionary) : value_(std::move(dictionary)) {}
  PropertyValue(PropertyUid uid) : value_(uid) {}
  // NOLINTEND(google-explicit-constructor)

  /// The value when it is a T (std::u16string, bool, std::int64_t, double, Date, Data, Array, Dictionary or
  /// PropertyUid), else null.
  template <class T>
  const T* get_if() const {
    return std::get_if<T>(&value_);
  }

  /// Calls `visitor` with the value as what it is.
  template <class Visitor>
  decltype(auto) visit(Visitor&& visitor) const {
    return std::visit(std::forward<Visitor>(visitor), value_);
  }

  bool operator==(const PropertyValue& other) const { return value_ == other.value_; }

 private:
  std::variant<std::u16string, bool, std::int64_t, double, Date, Data, Array, Dictionary, PropertyUid> value_;
};

/// What a value is, as people call it, with its article: "a text", "an array", …
std::string_view kind_name(const PropertyValue& value);

struct PropertyEntry {
  std::u16string key;
  PropertyValue value;
  bool operator==(const PropertyEntry&) const = default;
};

/// A dictionary of pairs as they were read: of several with one key the last one's value stands at the first one's
/// place. Never quadratic. Pure; any thread.
PropertyDictionary dictionary_of_pairs(std::vector<PropertyEntry>&& pairs);

/// A flag as preferences hold it: a boolean, a number (0 or not), or a text, which is true when, behind blanks, a sign
/// and zeros, it begins with a digit, "y" or "t" in either case. None for any other kind of value. Pure; any thread.
std::optional<bool> flag_value(const PropertyValue& value);

}  // namespace brindle
