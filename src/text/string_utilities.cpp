#include "text/string_utilities.h"

#include <algorithm>
#include <limits>

#include "platform/file_name.h"
#include "platform/message_log.h"
#include "text/date_format.h"

namespace brindle {
namespace {

// Whether a position lies inside the text. The cast takes 0 and everything negative out of the way as well.
bool is_inside(std::u16string_view text, std::int64_t position) {
  return static_cast<std::uint64_t>(position) - 1 < text.size();
}

std::u16string_view from_position(std::u16string_view text, std::int64_t start) {
  return is_inside(text, start) ? text.substr(static_cast<std::size_t>(start) - 1) : std::u16string_view();
}

}  // namespace

std::u16string on_disk(std::u16string_view typed) {
  std::u16string text(typed);
  std::replace(text.begin(), text.end(), u'/', u':');
  return text;
}

std::size_t findLocationInString(std::u16string_view text, const SearchText& find, std::int32_t n) {
  return n == 1 ? 0 : find.find_nth(text, std::max(n, 1)) + 1;
}

// Appending a pair of iterators would go through a temporary text.
void append_reversed(std::u16string_view text, std::u16string& out) {
  out.append(text);
  std::reverse(out.end() - static_cast<std::ptrdiff_t>(text.size()), out.end());
}

void append_replaced(std::u16string_view text, const SearchText& find, std::u16string_view replace, std::int64_t start,
                     std::int32_t count, std::u16string& out) {
  if (!is_inside(text, start)) return;
  std::size_t done = static_cast<std::size_t>(start) - 1;
  for (std::int64_t left = count == -1 ? std::numeric_limits<std::int64_t>::max() : count; left > 0; --left) {
    const std::size_t match = find.find(text, done);
    if (match == SearchText::npos) break;
    out.append(text.substr(done, match - done)).append(replace);
    done = match + find.size();
  }
  out.append(text.substr(done));
}

std::u16string replaceString(std::u16string_view text, std::u16string_view find, std::u16string_view replace,
                             std::int64_t start, std::int32_t count, bool caseSensitive) {
  std::u16string result;
  append_replaced(text, SearchText(find, caseSensitive), replace, start, count, result);
  return result;
}

void append_removed(std::u16string_view text, const SearchText& find, bool keep_match, std::int64_t start,
                    std::int32_t count, std::u16string& out) {
  const std::u16string_view part = from_position(text, start);
  const std::size_t match = find.find_nth(part, count);
  if (count == 0 || match == SearchText::npos) {
    out.append(count == 0 ? part : text);
    return;
  }
  const std::u16string_view kept = part.substr(0, keep_match ? match + find.size() : match);
  out.append(kept.empty() ? part.substr(match + find.size()) : kept);
}

void append_inserted(std::u16string_view text, const SearchText& find, std::u16string_view insert, std::int32_t n,
                     bool before, std::u16string& out) {
  const std::size_t match = find.find_nth(text, n);
  const std::size_t at = match == SearchText::npos ? text.size() : before ? match : match + find.size();
  out.append(text.substr(0, at));
  if (match != SearchText::npos) out.append(insert);
  out.append(text.substr(at));
}

void append_swapped(std::u16string_view text, const SearchText& separator, std::u16string& out) {
  const std::size_t match = separator.find(text);
  if (match == SearchText::npos) {
    out.append(text);
    return;
  }
  out.append(text.substr(match + separator.size()));
  out.append(text.substr(match, separator.size())).append(text.substr(0, match));
}

void append_swapped(std::u16string_view text, std::int32_t position, std::u16string& out) {
  if (!is_inside(text, position)) {
    out.append(text);
    return;
  }
  const auto index = static_cast<std::size_t>(position) - 1;
  out.append(text.substr(index + 1)).append(text.substr(index, 1)).append(text.substr(0, index));
}

void append_padded(std::u16string_view text, std::u16string_view mask, std::u16string& out) {
  if (mask.size() > text.size()) out.append(mask.substr(0, mask.size() - text.size()));
  out.append(text);
}

std::optional<Date> dateFromString(std::u16string_view text) {
  std::u16string plain(text);
  if (const std::size_t colon = plain.rfind(u':'); colon != std::u16string::npos) plain.erase(colon, 1);
  const std::optional<Date> date = parse_date(plain, u"yyyy-MM-dd'T'HH:mm:ssZ");
  if (!date) log_failure("dateFromString", "\"" + to_utf8(text) + "\" is not a date");
  return date;
}

std::optional<WallTime> date_of_stamp(std::u16string_view text) {
  if (text.empty() || text == u"0000:00:00 00:00:00") return std::nullopt;
  std::u16string plain(text);
  std::replace(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(plain.size(), 10)),
               u':', u'-');
  return parse_wall_time(plain, u"yyyy-MM-dd HH:mm:ss");
}

}  // namespace brindle
