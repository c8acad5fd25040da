#pragma once

// The whole state of the renaming window: which method is chosen, and every option of every method. One member a key,
// in the order in which a record is written. Members, their types and defaults are the rows of settings.def, where
// their meaning stands as well; `brindle settings` prints it.
//
// Plain data. An object belongs to one thread at a time; a job works on its own copy.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date.h"
#include "settings/meta_data_field.h"
#include "text/number_text.h"

namespace brindle {

/// A text setting. Absent is a state of its own: it ends a written record (settings_record.h).
using Text = std::optional<std::u16string>;
using TextList = std::vector<std::u16string>;

/// The methods, by the number that `selectedTab` holds; `from_list` takes the names from a list file and has no
/// operation.
enum class Method : std::int32_t {
#define METHOD_NAME(name) name,
#include "settings/settings.def"
};

/// The number that `selectedTab` holds for a method.
constexpr std::int32_t tab_of(Method method) {
  return static_cast<std::int32_t>(method);
}

// Which files take part by default, as the lists hold them: with the dot, in upper case.
inline TextList photo_extensions() {
  return {u".JPG", u".JPEG", u".EXIF", u".TIF", u".TIFF"};
}
inline TextList audio_extensions() {
  return {u".MP3", u".M4A", u".AAC", u".M4B"};
}

struct RenameSettings {
#define SETTING(type, key, default_value, method, change, rules, meaning) type key = default_value;
#include "settings/settings.def"

  bool operator==(const RenameSettings&) const = default;
};

/// The method whose tab is selected; none when `selectedTab` holds a number of none, as a profile's may.
std::optional<Method> selected_method(const RenameSettings& settings);

/// The integer value of a text setting; 0 when absent.
inline std::int32_t integer_of(const Text& text) {
  return text ? integer_value(*text) : 0;
}

/// The text of a setting; empty when absent. Views into it.
inline std::u16string_view text_of(const Text& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}

inline bool is_blank(const Text& text) {
  return !text || text->empty();
}

/// Sets every member to its default, and `dateTimeCustomDate` to `now`. Saving and forgetting the open profile is the
/// caller's.
void loadEmptyProfile(RenameSettings& settings, Date now);

// A mask as one text follows from its list: the tokens in order, with the separator between them when it is switched
// on. Both return whether the mask holds anything.

bool resetPhotoMask(RenameSettings& settings);
/// Here the separator stands only after one of the eight audio tokens, never after a text of the user's own.
bool resetID3Mask(RenameSettings& settings);

}  // namespace brindle
