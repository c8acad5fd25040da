#include <algorithm>

#include "cli/method_rows.h"
#include "metadata/metadata_catalogue.h"
#include "methods/date_time.h"
#include "methods/path_components.h"
#include "methods/photo_renaming.h"
#include "methods/prefix_suffix.h"
#include "platform/file_name.h"
#include "settings/setting_text.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

MetaDataField custom_field(std::u16string_view text) {
  const std::u16string token = u"<" + std::u16string(text) + u">";
  return {u"CUSTOM", token, token, std::u16string(text), {}};
}

}  // namespace

MetaDataField field_of_known_token(std::u16string_view token) {
  const MetaDataField* known = find_field(token);
  return known != nullptr ? *known : field_of_token(token);
}

FieldList fields_of_mask(std::u16string_view mask) {
  FieldList fields;
  while (!mask.empty()) {
    const std::size_t open = mask.find(u'<');
    const std::size_t close = open == mask.npos ? mask.npos : mask.find(u'>', open);
    if (open != 0) fields.push_back(custom_field(mask.substr(0, close == mask.npos ? mask.npos : open)));
    if (close == mask.npos) {
      if (open == 0) fields.push_back(custom_field(mask));
      break;
    }
    fields.push_back(field_of_known_token(mask.substr(open, close - open + 1)));
    mask.remove_prefix(close + 1);
  }
  return fields;
}

namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;
using option_group::what;

// Prefix, suffix, date and time.

template <auto is_there>
constexpr std::array<MethodOption, 5> dated_options() {
  return {{
      {"date",
       "created|modified|now",
       Kind::choice,
       to_translate("instead of TEXT, a date of the file, or the moment of the run"),
       [](S& s, const V& v) {
         s.isPrefixSuffixString = false, s.isPrefixSuffixDate = true, s.*is_there = true;
         s.prefixSuffixFileDateAttribute = (v.number + 1) % 3;
       },
       {},
       {},
       true,
       as_date},
      {"date-parts",
       "PATTERN",
       Kind::pattern,
       to_translate("how the date is written (ddMMyyyy)"),
       fill_date<prefix_suffix_parts>,
       {},
       "date"},
      {"time-parts",
       "PATTERN",
       Kind::pattern,
       to_translate("how the time is written (HHmmss); it follows the date behind a blank"),
       fill_time<prefix_suffix_parts>,
       {},
       "date"},
      {"text-before",
       "TEXT",
       Kind::text,
       to_translate("a text before the date"),
       [](S& s, const V& v) { s.prefixSuffixDatePrefix = v.text; },
       {},
       "date"},
      {"text-after",
       "TEXT",
       Kind::text,
       to_translate("a text behind the date"),
       [](S& s, const V& v) { s.prefixSuffixDateSuffix = v.text; },
       {},
       "date"},
  }};
}
constexpr auto prefix_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text before the name"),
                                   [](S& s, const V& v) { s.prefixSuffixPrefix = v.text; }}});
constexpr auto prefix_options = dated_options<&S::isPrefixSuffixDatePrefix>();
constexpr auto prefix_examples = std::to_array<Example>({
    {"prefix 'Brest - '", "IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"prefix --date modified --date-parts yyyy-MM-dd --text-after ' '", "", ""},
});
constexpr auto suffix_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text behind the name"),
                                   [](S& s, const V& v) { s.prefixSuffixSuffix = v.text; }}});
constexpr auto suffix_options = dated_options<&S::isPrefixSuffixDateSuffix>();
constexpr auto suffix_examples = std::to_array<Example>({
    {"suffix ' (Brest)'", "IMG_9.jpg", "IMG_9 (Brest).jpg"},
    {"suffix --date now --time-parts HH.mm --text-before ' '", "", ""},
});
constexpr std::string_view pattern_note = to_translate(
    "A PATTERN holds up to three parts of a date (yyyy, yy, MM, MMM, MMMM, dd, EEEE) or a time (HH, hh, mm, ss, a) "
    "with "
    "texts of your own between them; letters that are to stand as they are go between two \"'\".");

constexpr auto date_own_options = std::to_array<MethodOption>({
    {"source", "created|modified|custom", Kind::choice,
     to_translate("which date (created); custom is the moment of the run"),
     [](S& s, const V& v) { s.dateTimeDateOptionIndex = v.number, s.hasDateTimeCustomDate = v.number == custom_date; },
     what},
    {"custom-date", "DATE", Kind::moment, to_translate("this date, 2026-11-21 or 2026-11-21T10:00"),
     [](S& s, const V& v) {
       s.dateTimeDateOptionIndex = custom_date, s.hasDateTimeCustomDate = true, s.dateTimeCustomDate = v.date;
     },
     what},
    {"date-parts", "PATTERN", Kind::pattern_or_none, to_translate("how the date is written (ddMMyyyy); none: no date"),
     [](S& s, const V& v) {
       s.hasDateFormat = !v.pieces[0].empty();
       if (!s.hasDateFormat) return;
       fill_date<date_time_parts>(s, v);
     }},
    {"time-parts", "PATTERN", Kind::pattern_or_none, to_translate("how the time is written (HHmmss); none: no time"),
     [](S& s, const V& v) {
       s.hasTimeFormat = !v.pieces[0].empty();
       if (!s.hasTimeFormat) return;
       fill_time<date_time_parts>(s, v);
     }},
    {"separator", "TEXT", Kind::text, to_translate("between date and time"),
     [](S& s, const V& v) { s.dateTimeSeparator = v.text; }},
    {"colon", "TEXT", Kind::text, to_translate("what takes the place of every \":\" of the date"),
     [](S& s, const V& v) { s.isDateTimeColonReplace = true, s.dateTimeColonReplace = v.text; }},
    {"text-before", "TEXT", Kind::text, to_translate("a text before the date"),
     [](S& s, const V& v) { s.dateTimePrefix = v.text; }},
    {"text-after", "TEXT", Kind::text, to_translate("a text behind the date"),
     [](S& s, const V& v) { s.dateTimeSuffix = v.text; }},
});
constexpr auto date_options = join(date_own_options, placement_options<date_placement>());
constexpr auto date_examples = std::to_array<Example>({
    {"date --source modified --date-parts yyyy-MM-dd --time-parts none --text-after ' '", "", ""},
    {"date --custom-date 2026-11-21 --date-parts yyyyMMdd --time-parts none --at-end --text-before _", "IMG_9.jpg",
     "IMG_9_20261121.jpg"},
});

// clang-format off
constexpr auto date_rows = std::to_array<MethodWord>({
    {"prefix", to_translate("put a text or a date before the name"), pattern_note, as_string, prefix_operands, prefix_options, 0, nullptr,
     prefix_examples},
    {"suffix", to_translate("put a text or a date behind the name"), pattern_note, as_string, suffix_operands, suffix_options, 0, nullptr,
     suffix_examples},
    {"date", to_translate("put a date and time anywhere into the name"), pattern_note, date_time, {}, date_options, 0, nullptr,
     date_examples},
});
// clang-format on

// Path components.

constexpr auto path_own_options = std::to_array<MethodOption>({
    {"level", "N", Kind::number, to_translate("how many folders, counted from the innermost (1); -1: all"),
     [](S& s, const V& v) { s.pathComponentsLevelNo = v.number; }},
    {"separator", "TEXT", Kind::text, to_translate("between two folder names"),
     [](S& s, const V& v) { s.pathComponentsSeparator = v.text; }},
    {"text-before", "TEXT", Kind::text, to_translate("a text before the folder names"),
     [](S& s, const V& v) { s.pathComponentsPrefix = v.text; }},
    {"text-after", "TEXT", Kind::text, to_translate("a text behind the folder names"),
     [](S& s, const V& v) { s.pathComponentsSuffix = v.text; }},
});
constexpr auto path_options = join(path_own_options, placement_options<path_placement>());
constexpr auto path_examples = std::to_array<Example>({
    {"path --text-after ' - '", "Brest/IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"path --level 2 --separator _ --at-end --text-before _", "Trip/Brest/IMG_9.jpg", "IMG_9_Trip_Brest.jpg"},
});

// Audio tags and photo metadata.

template <auto is_on, auto separator, auto replaces, auto replacement>
constexpr std::array<MethodOption, 2> mask_options() {
  return {{
      {"separator", "TEXT", Kind::text,
       to_translate("between the values that are there; not behind a text of your own"),
       [](S& s, const V& v) { s.*is_on = true, s.*separator = v.text; }},
      {"replace-colons", "TEXT", Kind::text, to_translate("instead of each \":\" in a value"),
       [](S& s, const V& v) { s.*replaces = true, s.*replacement = v.text; }},
  }};
}

constexpr auto audio_operands = std::to_array<MethodOperand>(
    {{"MASK", Kind::text,
      to_translate("<Artist> <Year> <Genre> <Title> <Album> <Comments> <TrackNumber> <Composer>, and text between"),
      [](S& s, const V& v) { s.id3RenamingMask = v.text, s.id3RenamingTagsList = fields_of_mask(v.text); }}});
constexpr auto audio_own_options = std::to_array<MethodOption>({
    {"extensions", "LIST", Kind::text, to_translate("which files take part (.mp3;.m4a;.aac;.m4b)"),
     [](S& s, const V& v) { set_from_text(s, "id3Extensions", to_utf8(v.text)); }},
});
constexpr auto audio_options = join(mask_options<&S::isID3RenamingSeperator, &S::id3RenamingSeperator,
                                                 &S::isID3RenamingColonReplace, &S::id3RenamingColonReplace>(),
                                    audio_own_options);
constexpr auto audio_examples = std::to_array<Example>({
    {"audio '<TrackNumber> <Title>'", "", ""},
    {"audio '<Artist><Album><Title>' --separator ' - '", "", ""},
});

constexpr auto photo_operands = std::to_array<MethodOperand>(
    {{"MASK", Kind::text, to_translate("tokens such as <EXIF_Date> (brindle fields lists them), and text between"),
      [](S& s, const V& v) { s.photoMetaDataList = fields_of_mask(v.text), resetPhotoMask(s); }}});
constexpr auto photo_own_options = std::to_array<MethodOption>({
    {"date-parts", "PATTERN", Kind::pattern, to_translate("how dates are written (ddMMyyyy)"), fill_date<photo_parts>},
    {"time-parts", "PATTERN", Kind::pattern, to_translate("how times are written (HHmmss)"), fill_time<photo_parts>},
    {"number-mask", "MASK", Kind::text, to_translate("fills <SEQUENCES_Number_Sequence> up: 000 makes 7 into 007"),
     [](S& s, const V& v) { s.photoPaddingMask = v.text; }},
    {"restart", "", Kind::none,
     to_translate("count from 1 in each folder; the items are sorted by folder and name for it"),
     [](S& s, const V&) { s.isPhotoResetSequenceOnEachFolder = true; }},
    {"extensions", "LIST", Kind::text, to_translate("which files take part (.jpg;.jpeg;.exif;.tif;.tiff)"),
     [](S& s, const V& v) { set_from_text(s, "photoExtensions", to_utf8(v.text)); }},
});
constexpr auto photo_options = join(mask_options<&S::isPhotoRenamingSeperator, &S::photoRenamingSeperator,
                                                 &S::isPhotoRenamingColonReplace, &S::photoRenamingColonReplace>(),
                                    photo_own_options);
constexpr auto photo_examples = std::to_array<Example>({
    {"photo '<EXIF_Date>_<EXIF_Time>' --date-parts yyyy-MM-dd", "", ""},
    {"photo '<EXIF_Date> <SEQUENCES_Number_Sequence>' --number-mask 000 --restart --extensions '.jpg;.heic;.cr2'", "",
     ""},
});
constexpr std::string_view photo_note = to_translate(
    "A file without values is left with the texts of your own, and keeps its name when there are none. Pictures of one "
    "second need <SEQUENCES_Number_Sequence> too.");

// clang-format off
constexpr auto metadata_rows = std::to_array<MethodWord>({
    {"path", to_translate("put the names of the folders into the name"), "", path_components, {}, path_options, 0, nullptr, path_examples},
    {"audio", to_translate("name songs by their tags"), to_translate("A file without tags is left with the texts of your own, and keeps its name when there are none."), id3_tag, audio_operands, audio_options, 0,
     nullptr, audio_examples},
    {"photo", to_translate("name photos by what they say of themselves"), photo_note, photo, photo_operands, photo_options, 0, nullptr,
     photo_examples},
});
// clang-format on

}  // namespace

std::span<const MethodWord> date_method_rows() {
  return date_rows;
}

std::span<const MethodWord> metadata_method_rows() {
  return metadata_rows;
}

}  // namespace brindle
