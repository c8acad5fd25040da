#include "text/plain_date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace brindle {
namespace {

std::optional<unsigned> number_at(std::u16string_view text, std::size_t at, std::size_t size) {
  unsigned number = 0;
  for (const char16_t unit : text.substr(at, size)) {
    if (unit < u'0' || unit > u'9') return std::nullopt;
    number = number * 10 + (unit - u'0');
  }
  return number;
}

bool is_field_letter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// From three letters on a month is a word, and so is any text field in its long forms.
bool is_numeric(char16_t letter, std::size_t width) {
  if (letter == u'M') return width <= 2;
  if (letter == u'a') return width <= 3;
  return std::u16string_view(u"ydHhKkms").find(letter) != std::u16string_view::npos && width <= 9;
}

void append_number(std::int64_t number, std::size_t width, std::u16string& out) {
  std::array<char16_t, 20> digits;
  std::size_t start = digits.size();
  for (; number > 0 || start == digits.size(); number /= 10)
    digits[--start] = static_cast<char16_t>(u'0' + number % 10);
  const std::size_t size = digits.size() - start;
  if (width > size) out.append(width - size, u'0');
  out.append(digits.data() + start, size);
}

// A literal's end: the closing quote, where two quotes stand for one. Returns the index behind it.
std::size_t read_quoted(std::u16string_view pattern, std::size_t i, std::u16string& literal) {
  for (; i < pattern.size(); ++i) {
    if (pattern[i] == u'\'') {
      if (i + 1 == pattern.size() || pattern[i + 1] != u'\'') return i + 1;
      ++i;
    }
    literal.push_back(pattern[i]);
  }
  return i;
}

}  // namespace

std::optional<WallTime> read_plain_stamp(std::u16string_view text) {
  constexpr std::u16string_view form = u"0000-00-00 00:00:00";
  constexpr std::pair<std::size_t, std::size_t> places[] = {{0, 4}, {5, 2}, {8, 2}, {11, 2}, {14, 2}, {17, 2}};
  if (text.size() != form.size()) return std::nullopt;
  for (std::size_t i = 0; i < form.size(); ++i) {
    if (form[i] != u'0' && text[i] != form[i]) return std::nullopt;
  }
  unsigned parts[6] = {};
  for (std::size_t i = 0; i < 6; ++i) {
    const std::optional<unsigned> number = number_at(text, places[i].first, places[i].second);
    if (!number) return std::nullopt;
    parts[i] = *number;
  }
  const auto [year, month, day, hour, minute, second] = parts;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (year < 1 || !date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return std::chrono::local_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
         std::chrono::seconds(second);
}

void NumericDatePattern::add_literal(std::u16string_view text) {
  if (fields_.empty() || fields_.back().letter != 0) fields_.push_back({});
  fields_.back().literal.append(text);
}

void NumericDatePattern::add_field(std::u16string_view run) {
  fields_.push_back({run.front(), run.size(), {}});
}

std::optional<NumericDatePattern> NumericDatePattern::compile(std::u16string_view pattern, const DayHalves& halves) {
  NumericDatePattern compiled;
  compiled.halves_ = halves;
  for (std::size_t i = 0; i < pattern.size();) {
    std::size_t end = i + 1;
    if (is_field_letter(pattern[i])) {
      end = std::min(pattern.find_first_not_of(pattern[i], i), pattern.size());
      if (!is_numeric(pattern[i], end - i)) return std::nullopt;
      compiled.add_field(pattern.substr(i, end - i));
    } else if (pattern.substr(i, 2) == u"''") {
      compiled.add_literal(u"'");
      end = i + 2;
    } else if (pattern[i] == u'\'') {
      std::u16string literal;
      end = read_quoted(pattern, i + 1, literal);
      compiled.add_literal(literal);
    } else {
      compiled.add_literal(pattern.substr(i, 1));
    }
    i = end;
  }
  return compiled;
}

void NumericDatePattern::append(std::chrono::local_seconds moment, std::u16string& out) const {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::int64_t second = (moment - day).count();
  const std::int64_t hour = second / 3600;
  for (const Field& field : fields_) {
    switch (field.letter) {
      case 0:
        out.append(field.literal);
        break;
      case u'y':
        append_number(int{date.year()} % (field.width == 2 ? 100 : 10'000), field.width, out);
        break;
      case u'M':
        append_number(unsigned{date.month()}, field.width, out);
        break;
      case u'd':
        append_number(unsigned{date.day()}, field.width, out);
        break;
      case u'H':
        append_number(hour, field.width, out);
        break;
      case u'k':
        append_number(hour == 0 ? 24 : hour, field.width, out);
        break;
      case u'K':
        append_number(hour % 12, field.width, out);
        break;
      case u'h':
        append_number(hour % 12 == 0 ? 12 : hour % 12, field.width, out);
        break;
      case u'm':
        append_number(second / 60 % 60, field.width, out);
        break;
      case u's':
        append_number(second % 60, field.width, out);
        break;
      default:
        out.append(hour < 12 ? halves_.before_noon : halves_.after_noon);
    }
  }
}

}  // namespace brindle
