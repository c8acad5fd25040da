#pragma once

// The small operations on text that the rename methods and other parts of the program share.
//
// Positions are 1-based and count UTF-16 units; 0 stands for "not found". `caseSensitive` true means a literal
// comparison, false one by simple case folding (text/search_text.h). No parameter is an error: what is out of range
// leaves the text alone as each operation says. An operation that takes `out` appends to it and allocates only when it
// has to grow; `out` must not be the text it reads. Pure; any thread.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/date.h"
#include "text/search_text.h"

namespace brindle {

/// The on-disk form of a text that a person typed: every "/" becomes ":".
std::u16string on_disk(std::u16string_view typed);

/// Position of the n-th match, counted without overlap. 0 when there are fewer, and always 0 for `n` = 1: who wants the
/// first match searches directly. An `n` below 1 finds the first match.
std::size_t findLocationInString(std::u16string_view text, const SearchText& find, std::int32_t n);

/// The units in reverse order. The halves of a surrogate pair change places too: reverse twice to get the text back.
void append_reversed(std::u16string_view text, std::u16string& out);

/// The text from position `start` on, with the first `count` matches replaced. What stands before `start` is not part
/// of the result. A `count` of -1 replaces all; 0 and anything below -1 replace nothing.
std::u16string replaceString(std::u16string_view text, std::u16string_view find, std::u16string_view replace,
                             std::int64_t start, std::int32_t count, bool caseSensitive);
void append_replaced(std::u16string_view text, const SearchText& find, std::u16string_view replace, std::int64_t start,
                     std::int32_t count, std::u16string& out);

/// The text from position `start` on, cut behind the `count`-th match (when `replace` holds anything) or before it
/// (when it is empty). When that leaves nothing, what follows the match is kept instead. With fewer matches, or with a
/// `count` below 0, the whole text comes back.
void append_removed(std::u16string_view text, const SearchText& find, bool keep_match, std::int64_t start,
                    std::int32_t count, std::u16string& out);

/// The text with `insert` put before or behind the n-th match, counted without overlap; unchanged when there are fewer
/// matches or `n` is below 1.
void append_inserted(std::u16string_view text, const SearchText& find, std::u16string_view insert, std::int32_t n,
                     bool before, std::u16string& out);

/// What follows the first match of the separator, the match as it stands, what comes before it; unchanged without one.
void append_swapped(std::u16string_view text, const SearchText& separator, std::u16string& out);

/// What follows the unit at `position`, that unit, what comes before it; unchanged when `position` lies outside the
/// text.
void append_swapped(std::u16string_view text, std::int32_t position, std::u16string& out);

/// Pads from the left: the first units of `mask`, as many as the mask is longer than the text, then the text.
void append_padded(std::u16string_view text, std::u16string_view mask, std::u16string& out);

/// A date such as "2009-05-17T10:20:30+05:30"; none (and a line on standard error) for anything else. The last
/// ":" is deleted before the text is read, so the zone may stand with or without one, but must stand.
std::optional<Date> dateFromString(std::u16string_view text);

/// What the clock showed that a metadata date such as "2009:05:17 10:20:30" was taken from. None for an empty text, for
/// "0000:00:00 00:00:00", and for what is no date.
std::optional<WallTime> date_of_stamp(std::u16string_view text);

}  // namespace brindle
