// The small pieces that shape what is printed and read.

#include <gmock/gmock.h>
#include <unistd.h>

#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/method_call.h"
#include "cli/method_words.h"
#include "cli/name_change.h"
#include "cli/path_arguments.h"
#include "cli/terminal_text.h"
#include "platform/file_name.h"
#include "platform/output.h"

namespace brindle {
namespace {

TEST(TerminalText, EscapesWhatCouldDriveTheTerminal) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"plain name.jpg", "plain name.jpg"},  {"é 日本 🌊 e\u0301", "é 日本 🌊 e\u0301"},
      {"a\nb\tc\rd", "a\\nb\\tc\\rd"},       {"\x1b[31m\x7f", "\\x1b[31m\\x7f"},
      {"back\\slash", "back\\\\slash"},      {"\xff\xfe", "\\xff\\xfe"},
      {"\u202Egpj.exe", "\\u{202e}gpj.exe"}, {"\u200Eb\u2066c", "\\u{200e}b\\u{2066}c"},
      {"\u009B31m", "\\u{9b}31m"},           {"\u200D👩", "\u200D👩"},
  };
  for (const auto& [bytes, shown] : cases) EXPECT_EQ(escape_for_terminal(bytes), shown);
  std::string line;
  append_on_one_line("a\n\r\n\x1b\\\xff", line);
  EXPECT_EQ(line, "a\\n\\r\\n\x1b\\\xff");
}

TEST(DisplayWidth, CountsColumns) {
  const std::pair<std::string_view, std::size_t> cases[] = {
      {"", 0},    {"abc", 3}, {"é", 1}, {"e\u0301", 1}, {"日本", 4}, {"🌊", 2}, {"한", 2}, {"\u1112\u1161\u11AB", 2},
      {"שלום", 4}};
  for (const auto& [text, width] : cases) EXPECT_EQ(display_width(text), width) << text;
  EXPECT_EQ(fit_end("abcdef", 6), "abcdef");
  EXPECT_EQ(fit_end("abcdef", 4), "…def");
  EXPECT_EQ(fit_end("日本語", 5), "…本語");
  EXPECT_TRUE(has_right_to_left("a שלום") && has_right_to_left("مرحبا"));
  EXPECT_FALSE(has_right_to_left("abc é 日本"));
}

std::string marked(std::string_view name, const std::vector<NameRange>& ranges) {
  std::string text(name);
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
    text.insert(range->end, "]").insert(range->start, "[");
  return text;
}

TEST(NameComparison, MarksWhatChanges) {
  const std::array<std::string_view, 4> cases[] = {
      {"a.jpg", "Xa.jpg", "a.jpg", "[X]a.jpg"},
      {"aXb", "ab", "a[X]b", "ab"},
      {"same", "same", "same", "same"},
      {"a_b_c.txt", "a b c.txt", "a[_]b[_]c.txt", "a[ ]b[ ]c.txt"},
      {"IMG_0412.jpg", "Brest.jpg", "[IMG_0412].jpg", "[Brest].jpg"},
      {"aaa", "aa", "aa[a]", "aa"},
      {"cafe\u0301", "cafe", "caf[e\u0301]", "caf[e]"},
      {"é", "è", "[é]", "[è]"},
      {"👩\u200D👧", "👩", "[👩\u200D👧]", "[👩]"},
      {"", "a", "", "[a]"},
  };
  NameComparison comparison;
  for (const auto& [before, after, removed, added] : cases) {
    comparison.compare(before, after);
    EXPECT_EQ(marked(before, comparison.removed()), removed);
    EXPECT_EQ(marked(after, comparison.added()), added);
  }
}

TEST(JsonLine, IsValidWhateverANameHolds) {
  std::string buffer;
  JsonLine(buffer, "item")
      .bytes("path", "/a\"\\\n\x01\x7f é🌊\xEE\xBE\x80")
      .bytes("oldPath", "/\xff.x")
      .bytes("cut", "a\xE6\x97")
      .bytes("surrogate", "\xED\xA0\x80")
      .number("n", -3)
      .seconds("s", 1.25)
      .null("log");
  EXPECT_EQ(
      buffer,
      "{\"type\":\"item\",\"path\":\"/a\\\"\\\\\\n\\u0001\\u007f é🌊\xEE\xBE\x80\",\"oldPath\":\"/\uFFFD.x\","
      "\"oldPathBytes\":\"L/8ueA==\",\"cut\":\"a\uFFFD\",\"cutBytes\":\"YeaX\",\"surrogate\":\"\uFFFD\uFFFD\uFFFD\","
      "\"surrogateBytes\":\"7aCA\",\"n\":-3,\"s\":1.250,\"log\":null}\n");
}

std::string pieces_of(std::string_view pattern) {
  const auto pieces = split_pattern(decode_file_name(pattern));
  std::string text;
  for (std::size_t i = 0; pieces && i < pieces->size(); ++i) text += (i > 0 ? "|" : "") + to_utf8((*pieces)[i]);
  return text;
}

TEST(Pattern, FallsIntoPartsAndSeparators) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"yyyy-MM-dd", "yyyy|-|MM|-|dd"},
      {"yyyyMMdd", "yyyy||MM||dd"},
      {"dd. MMMM", "dd|. |MMMM||None"},
      {"HH'h'mm'm'", "HH|'h'|mm|'m'|None"},
      {"yyyy", "yyyy||None||None"},
      {"yyyy 'at' MM", "yyyy| 'at' |MM||None"},
      {"-yyyy", ""},
      {"", ""},
      {"dd-MM-yyyy-", ""},
      {"a b c d", ""},
  };
  for (const auto& [pattern, pieces] : cases) EXPECT_EQ(pieces_of(pattern), pieces) << pattern;
}

TEST(Suggestion, IsNearOrAbsent) {
  const std::string_view words[] = {"insert", "reverse", "replace", "at", "at-end", "files"};
  const std::pair<std::string_view, std::string_view> cases[] = {{"insrt", "insert"},
                                                                 {"isnert", "insert"},
                                                                 {"rev", "reverse"},
                                                                 {"at-ned", "at-end"},
                                                                 {"fles", "files"},
                                                                 {"xyzzy", ""},
                                                                 {"", ""}};
  for (const auto& [word, meant] : cases) EXPECT_EQ(closest_word(word, words), meant) << word;
}

TEST(Paths, AreShownRelativeToTheCurrentFolder) {
  EXPECT_EQ(relative_path("/x/a/b", "/x"), "a/b");
  EXPECT_EQ(relative_path("/x", "/x"), ".");
  EXPECT_EQ(relative_path("/xy/a", "/x"), "/xy/a");
  EXPECT_EQ(relative_path("/a", "/"), "a");
}

TEST(Output, EndsQuietlyWhenTheReaderGoes) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::signal(SIGPIPE, SIG_IGN);
  ::close(ends[0]);
  Output gone(ends[1]);
  (gone << "x").flush();
  EXPECT_TRUE(gone.closed());
  EXPECT_EQ(gone.error(), 0);
  Output broken(-1);
  (broken << "x").flush();
  EXPECT_TRUE(broken.closed());
  EXPECT_EQ(broken.error(), EBADF);
  ::close(ends[1]);
}

}  // namespace
}  // namespace brindle
