#include "app/string_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>

namespace brindle {
namespace {

struct StringEntry {
  std::string_view key;
  std::string_view text;
};

// Sorted by key. A further language is a further table of this kind, chosen in table_of_user().
constexpr auto english = std::to_array<StringEntry>({
    {"ABORT", "Abort"},
    {"ADDFILEEXTENSIONALREADYEXISTS", "The extension %@ is in the list already."},
    {"ADDFILEEXTENSIONTITLE", "Add Extension"},
    {"APPLICATIONCREATEFOLDERFAILED", "The folder for logs, profiles and rules could not be created."},
    {"APPLICATIONINITTITLE", "Brindle Cannot Start"},
    {"CHECKINGLOGFILE", "Checking the log…"},
    {"CHOOSEFILESORFOLDERSTITLE", "Choose Files or Folders"},
    {"CHOOSEFILESTITLE", "Choose Files"},
    {"CHOOSEFOLDERSTITLE", "Choose Folders"},
    {"CHOOSELOGFOLDERPATHTITLE", "Choose the Folder for Logs"},
    {"CHOOSEPROFILEFOLDERPATHTITLE", "Choose the Folder for Profiles"},
    {"CHOOSEPROFILETITLE", "Choose a Profile"},
    {"CHOOSERULEFOLDERPATHTITLE", "Choose the Folder for Rules"},
    {"CHOOSERULESETTINGSFILETITLE", "%@: Choose a Rule File"},
    {"CHOOSETABDELIMITEDTEXTFILE", "Choose a Tab-Delimited Text File"},
    {"CONTINUE", "Continue"},
    {"DATETIMEATAFTERTEXTINVALIDINPUT", "The text to put the date after is missing"},
    {"DATETIMEATBEFORETEXTINVALIDINPUT", "The text to put the date before is missing"},
    {"ENTERSOMETEXT", "Enter the text to search for."},
    {"ENTERVALIDVALUE", "Enter a text."},
    {"EXPORTFILELISTTITLE", "Export the File List"},
    {"EXPORTFILESEXPORTEDFAILED", "The list could not be exported."},
    {"EXPORTFILESEXPORTEDSUCCESS", "The list was exported."},
    {"EXPORTFILESFAILED", "With full paths the location has no column of its own. Choose a column of names as well."},
    {"EXPORTFILESTITLE", "Export"},
    {"EXPORTNOCOLUMN", "Choose at least one column."},
    {"FILENAME", "Filename"},
    {"FILES", "files"},
    {"FOLDERS", "folders"},
    {"GENERALINVALIDINPUT", "The text for this transformation is missing"},
    {"GENERATINGPREVIEWPLEASEWAIT", "Generating the preview, please wait…"},
    {"ID3INVALIDINPUT", "The mask is empty"},
    {"INSERTINVALIDINPUT", "The text to insert is missing"},
    {"INSERTTEXTATAFTERTEXT", "The text to insert after is missing"},
    {"INSERTTEXTATBEFORETEXT", "The text to insert before is missing"},
    {"INVALIDID3RENAMINGMASK", "Add at least one audio tag or text to the mask."},
    {"INVALIDPHOTORENAMINGMASK", "Add at least one field or text to the mask."},
    {"ITEMRENAMINGMESSAGEFILES", "Rename the files to the names of the preview? The renaming can be undone."},
    {"ITEMRENAMINGMESSAGEFOLDERS", "Rename the folders to the names of the preview? The renaming can be undone."},
    {"ITEMRENAMINGTITLEFILES", "Rename Files"},
    {"ITEMRENAMINGTITLEFOLDERS", "Rename Folders"},
    {"ITEMSRESTORED", "Items restored: %d"},
    {"LOADINGMESSAGE", "Loading %@, please wait…"},
    {"LOADINGTIME", "Loading"},
    {"LOADPROFILETITLE", "Open Profile"},
    {"LOCATION", "Location"},
    {"LOGCREATEFAILED",
     "The log could not be created. Without it this renaming cannot be undone. Rename all the same?"},
    {"NEWFILENAME", "New Filename"},
    {"NO", "No"},
    {"NOITEMSTOEXPORT", "There is nothing to export yet. Add files or folders first."},
    {"NOITEMSTOPREVIEW", "There is nothing to preview yet. Add files or folders first."},
    {"NOITEMSTOREMOVE", "Select the items to remove first."},
    {"OPENRULEINCOMPATIBLE", "This rule file was written by a version of the program that cannot be read."},
    {"OPENRULETITLE", "Open Rules"},
    {"PATHTEXTATAFTERTEXT", "The text to put the folder names after is missing"},
    {"PATHTEXTATBEFORETEXT", "The text to put the folder names before is missing"},
    {"PHOTOINVALIDINPUT", "The mask is empty"},
    {"PREVIEWTIME", "Preview"},
    {"PROFILEDELETECONFIRM", "Delete the selected profile?"},
    {"PROFILEENTERNEWNAME", "Enter a name for the new profile."},
    {"PROFILEINCOMPATIBLE", "This profile was written by a version of the program that cannot be read."},
    {"PROFILELOADFAILED", "The profile could not be opened."},
    {"PROFILELOADMESSAGE", "Open the profile “%@” in place of the open one?"},
    {"PROFILEOVERWRITECONFIRM", "A profile of this name exists already. Replace it?"},
    {"PROFILESAVEDFAILED", "The profile could not be saved."},
    {"PROFILESELECT", "Select a profile first."},
    {"PROFILESETTINGSFILETITLE", "Open Profile"},
    {"PROFILETITLE", "Profiles"},
    {"RENAMEFROMFILEMESSAGE",
     "The file holds no list. A line is the name, the new name and the location, separated by tabs."},
    {"RENAMEFROMFILETITLE", "Rename from List"},
    {"RENAMINGITEMSPLEASEWAIT", "Renaming %@, please wait…"},
    {"RENAMINGTIME", "Renaming"},
    {"REPLACEREMOVEINVALIDINPUT", "The text to search for is missing"},
    {"RULEALREADYEXISTS", "Replace the rules of the window by those of “%@”?"},
    {"RULEINCOMPATIBLE", "This rule file was written by a version of the program that cannot be read."},
    {"RULESETTINGSFILESAVEDSUCCESS", "The rules were saved."},
    {"RULESETTINGSFILETITLE", "Rule File"},
    {"RULESETTINGSFILEUNABLETOSAVE", "The rules could not be saved."},
    {"SAVEASPROFILETITLE", "Save Profile As"},
    {"SAVERULESETTINGSFILETITLE", "%@: Save Rules"},
    {"SELECTLOGFILETITLE", "%@: Choose a Log"},
    {"TIMETAKEN", "%@: %d s"},
    {"TOTALFILESFOUND", "Files found: %d"},
    {"TOTALFILESRENAMED", "Files renamed: %d"},
    {"TOTALFILESSELECTED", "Files in the list: %d"},
    {"TOTALFOLDERSFOUND", "Folders found: %d"},
    {"TOTALFOLDERSRENAMED", "Folders renamed: %d"},
    {"TOTALFOLDERSSELECTED", "Folders in the list: %d"},
    {"TOTALLOGFILES", "Logs: %d"},
    {"TOTALNOSFILESRENAMED", "Files renamed in all: %d"},
    {"TOTALNOSFOLDERSRENAMED", "Folders renamed in all: %d"},
    {"TOTALNOSRENAMEDITEMSFOUND", "Renamed items in the log: %d"},
    {"UNABLETOADDRULE", "The Rule Was Not Added"},
    {"UNABLETOGENERATENEWFILENAMEERROR", "The new name could not be made: %@"},
    {"UNABLETOOPENFILE", "The file could not be read as UTF-8 text."},
    {"UNDOFILESFOLDERSDELETECONFIRM", "Delete the selected log? Its renaming can then no longer be undone."},
    {"UNDOFILESFOLDERSINCOMPATIBLE", "This log was written by a version of the program that cannot be read."},
    {"UNDOFILESFOLDERSINVALIDFILE", "This file is no log, or nothing was renamed in it."},
    {"UNDOFILESFOLDERSNOLOGSELECTED", "Select a log first."},
    {"UNDOFILESFOLDERSTITLE", "Undo Renaming"},
    {"UNDOINGITEMS", "Restoring the old names…"},
    {"UNDOINGTIME", "Undo"},
    {"UNDOTOTALNOSITEMDOESNOTEXISTS", "Items left alone, missing or with their old name taken: %d"},
    {"UNDOTOTALNOSITEMSFOUND", "Items in the log: %d\n"},
    {"UNDOTOTALNOSITEMSRENAMED", "Items restored: %d\n"},
    {"VIEWLOGFILETITLE", "View Log"},
    {"VIEWLOGFILETITLEMESSAGE", "Select a log first."},
    {"YES", "Yes"},
});
static_assert(std::ranges::adjacent_find(english, std::ranges::greater_equal{}, &StringEntry::key) == english.end());

std::span<const StringEntry> table_of_user() {
  return english;
}

std::string text_of(const FormatArgument& argument) {
  const auto* number = std::get_if<std::int64_t>(&argument);
  return number ? std::to_string(*number) : std::string(std::get<std::string_view>(argument));
}

// A placeholder at the start of `format`, which begins with "%".
struct Placeholder {
  std::size_t length = 0;
  std::optional<std::size_t> place;  // from 1
};

std::optional<Placeholder> placeholder_at(std::string_view format) {
  Placeholder found;
  std::size_t place = 0;
  const auto [end, error] = std::from_chars(format.data() + 1, format.data() + format.size(), place);
  std::size_t at = 1;
  if (error == std::errc() && end != format.data() + format.size() && *end == '$') {
    found.place = place;
    at = static_cast<std::size_t>(end - format.data()) + 1;
  }
  if (at >= format.size() || (format[at] != '@' && format[at] != 'd')) return std::nullopt;
  found.length = at + 1;
  return found;
}

}  // namespace

std::string localized(std::string_view key) {
  const std::span<const StringEntry> table = table_of_user();
  const auto found = std::ranges::lower_bound(table, key, {}, &StringEntry::key);
  return std::string(found != table.end() && found->key == key ? found->text : key);
}

std::string fill_format(std::string_view format, std::span<const FormatArgument> arguments) {
  std::string text;
  std::size_t next = 0;
  for (std::size_t i = 0; i < format.size();) {
    const std::string_view rest = format.substr(i);
    const auto placeholder = rest.front() == '%' ? placeholder_at(rest) : std::nullopt;
    const std::size_t index = placeholder ? placeholder->place.value_or(++next) - 1 : arguments.size();
    if (index < arguments.size()) {
      text += text_of(arguments[index]);
      i += placeholder->length;
    } else {
      text += rest.front();
      i += rest.starts_with("%%") ? 2 : 1;
    }
  }
  return text;
}

}  // namespace brindle
