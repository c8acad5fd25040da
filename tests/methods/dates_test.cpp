// The methods that write dates: which date, and in which pattern. All in one zone and language, whatever the machine
// has.

#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/smpdtfmt.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "methods/date_time.h"
#include "methods/prefix_suffix.h"
#include "methods/sample_item.h"
#include "text/date_format.h"
#include "text/string_utilities.h"

namespace brindle::test {
namespace {

// Before anything asks for the zone: it is looked up once a process.
const bool zone_is_set = setenv("TZ", "Europe/Berlin", 1) == 0 && setenv("LC_ALL", "C.UTF-8", 1) == 0;

/// 2009-05-17 15:04:05 in Berlin.
constexpr Date some_date{std::chrono::milliseconds(1'242'565'445'678)};

/// A folder of its own that goes when the test ends.
class FileDatesTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle_dates_XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::ofstream(folder_ + "/img.jpg") << "x";
    const struct timespec times[] = {{1, 0}, {some_date.time_since_epoch().count() / 1000, 678'000'000}};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder_ + "/img.jpg").c_str(), times, 0), 0);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string folder_;
};

TEST(PrefixSuffix, DoesAsTheTableSays) {
  for_each_case("prefix_suffix", [](const Case& c) {
    RenameSettings settings;
    settings.isPrefixSuffixString = !c.has("before") && !c.has("behind");
    settings.prefixSuffixPrefix = settings.prefixSuffixDatePrefix = c["prefix"];
    settings.prefixSuffixSuffix = settings.prefixSuffixDateSuffix = c["suffix"];
    settings.prefixSuffixFileDateAttribute = c.number("attribute", 0);
    settings.isPrefixSuffixDatePrefix = c.flag("before");
    settings.isPrefixSuffixDateSuffix = c.flag("behind");
    clear_parts(settings, prefix_suffix_parts);
    fill_parts(c, settings, prefix_suffix_parts);
    expect_case(c, PrefixSuffixParameters(settings, some_date));
  });
}

TEST(DateTime, DoesAsTheTableSays) {
  for_each_case("date_time", [](const Case& c) {
    RenameSettings settings;
    settings.dateTimeDateOptionIndex = c.number("source", custom_date);
    settings.dateTimeCustomDate = some_date;
    settings.hasDateFormat = c.flag("date", true);
    settings.hasTimeFormat = c.flag("time", false);
    settings.isDateTimeColonReplace = c.has("colon");
    settings.dateTimeColonReplace = c["colon"];
    settings.dateTimeSeparator = c["separator"];
    settings.dateTimePrefix = c["prefix"];
    settings.dateTimeSuffix = c["suffix"];
    fill_place(c, settings, date_placement);
    clear_parts(settings, date_time_parts);
    fill_parts(c, settings, date_time_parts);
    const std::u16string pattern = date_time_pattern(settings);
    EXPECT_EQ(to_utf8(pattern), to_utf8(c.has("pattern") ? c["pattern"] : pattern));
    expect_case(c, DateTimeParameters(settings));
  });
}

// The year of the date of change.
RenameSettings changed_in_year() {
  RenameSettings settings;
  settings.dateTimeDateOptionIndex = modification_date;
  settings.hasTimeFormat = false;
  clear_parts(settings, date_time_parts);
  settings.dateTimeFormatDatePart1 = u"yyyy";
  return settings;
}

TEST_F(FileDatesTest, AreReadOfTheFile) {
  FileSystemItem item = sample_item(u"img.jpg", folder_);
  StepRunner run;
  RenameSettings settings = changed_in_year();
  settings.dateTimeFormatDateSeperator1 = u"-";
  settings.dateTimeFormatDatePart2 = u"MM";
  EXPECT_TRUE(run(DateTimeParameters(settings), item));
  EXPECT_EQ(to_utf8(item.newFilename()), "2009-05img.jpg");
  // The disk's own date of making the file, where it keeps one, is later than the one the test has set.
  settings.dateTimeDateOptionIndex = creation_date;
  EXPECT_TRUE(run(DateTimeParameters(settings), item));
  EXPECT_GE(to_utf8(item.newFilename()), "2009-05");

  item.setNewFilename(u"");
  settings.isPrefixSuffixString = false;
  settings.prefixSuffixFileDateAttribute = date_modified;
  settings.isPrefixSuffixDateSuffix = true;
  settings.prefixSuffixDateSuffix = u"h";
  clear_parts(settings, prefix_suffix_parts);
  settings.prefixSuffixDatePart1 = u"yyyy";
  settings.prefixSuffixDateSeperator1 = u"-";
  settings.prefixSuffixDatePart2 = u"MM";
  settings.prefixSuffixTimePart1 = u"HH";
  EXPECT_TRUE(run(PrefixSuffixParameters(settings, Date{}), item));
  EXPECT_EQ(to_utf8(item.newFilename()), "img2009-05 15h.jpg");
}

TEST_F(FileDatesTest, OfALinkAreItsOwn) {
  std::filesystem::create_symlink("img.jpg", folder_ + "/link.jpg");
  FileSystemItem item = sample_item(u"link.jpg", folder_);
  StepRunner run;
  EXPECT_TRUE(run(DateTimeParameters(changed_in_year()), item));
  EXPECT_NE(to_utf8(item.newFilename()), "2009link.jpg");
}

// Patterns of numbers take a way of their own, which must write what the general formatter writes, in winter and in
// summer and in years long gone.
TEST(DateFormatter, WritesWhatTheGeneralFormatterWrites) {
  const std::u16string_view patterns[] = {u"yyyy-MM-dd HH:mm:ss", u"y/yy/yyyyy M d", u"h:m:s a",
                                          u"hh K KK k kk H a",    u"''yy'y'''dd'",   u"dd'",
                                          u"yyyy年MM月"};
  for (const std::u16string_view pattern : patterns) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::SimpleDateFormat general(icu::UnicodeString(pattern.data(), static_cast<std::int32_t>(pattern.size())),
                                        icu::Locale("en_US_POSIX"), status);
    ASSERT_TRUE(U_SUCCESS(status));
    const DateFormatter formatter(pattern);
    for (std::int64_t hour = -30'000L * 365; hour < 4'000'000; hour += 3203) {
      const std::int64_t milliseconds = hour * 3'600'000 + hour % 3'600'000;
      icu::UnicodeString expected;
      general.format(static_cast<UDate>(milliseconds), expected);
      ASSERT_EQ(formatter.format(Date(std::chrono::milliseconds(milliseconds))),
                std::u16string(expected.getBuffer(), static_cast<std::size_t>(expected.length())))
          << to_utf8(pattern) << " at hour " << hour;
    }
  }
}

TEST(DateFormatter, WritesWordsAndRefusesUnknownFields) {
  EXPECT_EQ(to_utf8(format_date(some_date, u"EEE dd MMM yyyy")), "Sun 17 May 2009");
  EXPECT_EQ(to_utf8(format_date(some_date, u"dd-MMM-yyyy hh:mm:ss a")), "17-May-2009 03:04:05 PM");
  EXPECT_THROW(format_date(some_date, u"yyyy n"), std::runtime_error);
}

// Summer began in Berlin on 29 March at two o'clock, and ended on 25 October at three.
TEST(MetadataDates, AreWhatTheCameraShowedWhateverTheClocksHereDo) {
  for (const std::u16string_view stamp :
       {u"2009:03:29 01:30:00", u"2009:03:29 02:30:00", u"2009:03:29 03:30:00", u"2009:10:25 02:00:00",
        u"2009:10:25 03:00:00", u"1582:10:10 02:30:00", u"0001:01:01 00:00:00", u"9999:12:31 23:59:59"}) {
    const std::optional<WallTime> time = date_of_stamp(stamp);
    ASSERT_TRUE(time) << to_utf8(stamp);
    EXPECT_EQ(to_utf8(format_date(*time, u"yyyy:MM:dd HH:mm:ss")), to_utf8(stamp));
    EXPECT_EQ(to_utf8(format_date(*time, u"EEE, HH:mm:ss")).substr(5), to_utf8(stamp.substr(11)));
  }
  EXPECT_EQ(*date_of_stamp(u"2009:03:29 02:30:00") - *date_of_stamp(u"2009:03:29 01:30:00"), std::chrono::hours(1));
  EXPECT_EQ(date_of_stamp(u"2009: 3:29  2:30:00"), date_of_stamp(u"2009:03:29 02:30:00"));
  EXPECT_EQ(format_date(*date_of_stamp(u"2009:03:29 02:30:00"), u"yyyy-MM-dd HH:mm:ss"), u"2009-03-29 02:30:00");
  const Date skipped = parse_date(u"2009-03-29 02:30:00", u"yyyy-MM-dd HH:mm:ss").value();
  EXPECT_LE(std::chrono::abs(skipped - std::chrono::sys_days(std::chrono::year(2009) / 3 / 29) - std::chrono::hours(1)),
            std::chrono::hours(1));
}

TEST(MetadataDates, AreReadAsTheyStand) {
  EXPECT_EQ(date_of_stamp(u"2009:05:17 15:04:05"), WallTime(std::chrono::seconds(1'242'572'645)));
  EXPECT_EQ(date_of_stamp(u"2009-05-17 15:04:05"), WallTime(std::chrono::seconds(1'242'572'645)));
  EXPECT_EQ(format_date(*date_of_stamp(u"2009:05:17 15:04:05"), u"yyyy-MM-dd HH:mm:ss Z"),
            u"2009-05-17 15:04:05 +0200");
  EXPECT_EQ(format_date(*date_of_stamp(u"2009:12:17 15:04:05"), u"yyyy-MM-dd HH:mm:ss Z"),
            u"2009-12-17 15:04:05 +0100");
  for (const auto* const none : {u"", u"0000:00:00 00:00:00", u"2009:13:45 10:20:30", u"2009:05:17",
                                 u"2009:05:17 15:04:05x", u"yesterday", u"    :  :     :  :  "}) {
    EXPECT_FALSE(date_of_stamp(none)) << to_utf8(none);
  }
  const auto seconds = std::chrono::floor<std::chrono::seconds>(some_date);
  EXPECT_EQ(dateFromString(u"2009-05-17T18:34:05+05:30"), seconds);
  EXPECT_EQ(dateFromString(u"2009-05-17T08:04:05-05:00"), seconds);
  EXPECT_FALSE(dateFromString(u"2009-05-17T18:34:05"));
  EXPECT_FALSE(dateFromString(u"2009-05-17T18:34:05+0530"));  // its last ":" stands in the time
  EXPECT_FALSE(dateFromString(u""));
}

}  // namespace
}  // namespace brindle::test
