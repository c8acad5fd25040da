#include "cli/mask_text.h"
#include "cli/method_rows.h"
#include "methods/path_components.h"
#include "methods/photo_renaming.h"
#include "platform/file_name.h"
#include "settings/setting_text.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;

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

std::span<const MethodWord> metadata_method_rows() {
  return metadata_rows;
}

}  // namespace brindle
