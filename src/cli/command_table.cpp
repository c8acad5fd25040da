#include "cli/command_table.h"

#include <algorithm>
#include <array>

#include "cli/commands.h"

namespace brindle {
namespace {

using enum OptionId;

constexpr auto options = std::to_array<OptionRow>({
    {files, "files", 0, "", "rename files, and packages and links (the default)"},
    {folders, "folders", 0, "",
     "rename folders instead: those below each PATH, or each PATH itself with --no-subfolders"},
    {subfolders, "subfolders", 0, "", "look into folders and all they hold (the default)"},
    {no_subfolders, "no-subfolders", 0, "", "do not look into folders"},
    {hidden, "hidden", 0, "", "take names that begin with \".\" too"},
    {sort, "sort", 0, "name|folder|none",
     "the order of the list, for counting: by name, by folder and name, or as found (none)"},
    {from, "from", 0, "FILE", "read more PATHs from FILE, one a line; \"-\" is standard input"},
    {nul, "null", '0', "", "the PATHs read with --from end with NUL, as find -print0 writes them"},
    {set, "set", 0, "KEY=VALUE",
     "set any key of the settings record, after all else (see brindle settings); repeatable"},
    {all, "all", 'a', "", "show the items that keep their names too"},
    {json, "json", 0, "", "print one JSON object a line, for programs"},
    {yes, "yes", 'y', "", "do not ask"},
    {quiet, "quiet", 'q', "", "print errors only"},
    {no_color, "no-color", 0, "", "no colour, on a terminal either; so does NO_COLOR in the environment"},
    {help, "help", 'h', "", "show this help"},
    {version, "version", 0, "", "show the version"},
});

constexpr auto preview_options = std::to_array<OptionId>(
    {files, folders, subfolders, no_subfolders, hidden, sort, from, nul, set, all, json, quiet, no_color, help});
constexpr auto rename_options = std::to_array<OptionId>(
    {files, folders, subfolders, no_subfolders, hidden, sort, from, nul, set, all, yes, json, quiet, no_color, help});
constexpr auto undo_options = std::to_array<OptionId>({yes, json, quiet, no_color, help});
constexpr auto list_options = std::to_array<OptionId>({json, quiet, no_color, help});
constexpr auto plain_options = std::to_array<OptionId>({quiet, no_color, help});

constexpr std::string_view grammar =
    "Options and PATHs come first. The first word that names a method begins the method, which ends the PATHs; "
    "\"then\" "
    "begins the next one. Options of the command may also stand behind a method. A PATH that is called like a method "
    "is "
    "written with a slash, ./insert, or behind \"--\", where it is a PATH when it exists. \"--\" ends options: what "
    "follows "
    "may begin with \"-\". Everything else in a PATH stands for itself, whatever it holds.\n\n"
    "In the texts of a method \"/\" becomes \":\", since no name can hold it.";

constexpr auto preview_examples = std::to_array<Example>({
    {"preview Photos insert 'Brest - '", "", ""},
    {"preview --folders . case --lower", "", ""},
    {"preview --sort name *.jpg number --start 1 --mask 000 then suffix _raw", "", ""},
    {"preview Music --set selectedTab=5 --set generalOptionIndex=4", "", ""},
});
constexpr auto rename_examples = std::to_array<Example>({
    {"rename Photos insert 'Brest - '", "", ""},
    {"rename --yes Music replace _ ' ' --all then case --proper", "", ""},
    {"rename --yes -0 --from - extension --lower", "", ""},
});
constexpr auto undo_examples = std::to_array<Example>({
    {"undo", "", ""},
    {"undo 'Log 21-11-2026 10-00-00-12.xml'", "", ""},
});
constexpr auto settings_examples = std::to_array<Example>({{"settings", "", ""}, {"settings selectedTab", "", ""}});
constexpr auto fields_examples = std::to_array<Example>({{"fields", "", ""}, {"fields IMG_9.jpg", "", ""}});
constexpr auto help_examples = std::to_array<Example>({{"help rename", "", ""}, {"help insert", "", ""}});

constexpr auto commands = std::to_array<CommandRow>({
    {"preview", "[OPTION]... PATH... METHOD [then METHOD]...", "show the new names and touch nothing", grammar,
     Operands::paths_and_methods, preview_options, run_preview, preview_examples},
    {"rename", "[OPTION]... PATH... METHOD [then METHOD]...",
     "show the new names, ask, rename, and keep a log for undo", grammar, Operands::paths_and_methods, rename_options,
     run_rename, rename_examples},
    {"undo", "[OPTION]... [LOG]", "take a renaming back: the newest, or that of LOG",
     "LOG is a path, or the name of a log in the log folder (see brindle logs). Each item goes back to its old name, "
     "the "
     "last renamed first; nothing is ever replaced. The log then goes to the trash.",
     Operands::log, undo_options, run_undo, undo_examples},
    {"logs",
     "[OPTION]...",
     "list the logs of past renamings, newest first",
     "",
     Operands::none,
     list_options,
     run_logs,
     {}},
    {"recover",
     "[OPTION]...",
     "finish the logs of interrupted runs",
     "What a run that was killed had renamed by then becomes a log that can be undone. Rename, undo and logs do this "
     "by "
     "themselves.",
     Operands::none,
     plain_options,
     run_recover,
     {}},
    {"fields", "[OPTION]... [FILE]", "list the tokens of photo and audio masks; with FILE, their values",
     "Dates and times are written as the photo method does without options.", Operands::file, list_options, run_fields,
     fields_examples},
    {"settings", "[OPTION]... [KEY]...", "list the keys for --set: type, default, meaning", "", Operands::keys,
     list_options, run_settings, settings_examples},
    {"help", "[COMMAND or METHOD]", "show help",
     "man-page, bash-completion, zsh-completion and fish-completion, instead of a word, print what belongs into the "
     "folders of man and of these shells.",
     Operands::topic, plain_options, run_help, help_examples},
});

}  // namespace

std::span<const CommandRow> command_table() {
  return commands;
}
std::span<const OptionRow> option_table() {
  return options;
}

const CommandRow* find_command(std::string_view word) {
  const auto row = std::ranges::find(commands, word, &CommandRow::word);
  return row == commands.end() ? nullptr : &*row;
}

const OptionRow& option_row(OptionId id) {
  return *std::ranges::find(options, id, &OptionRow::id);
}

namespace {

template <class Test>
const OptionRow* find_option_if(const CommandRow& command, Test test) {
  const auto id = std::ranges::find_if(command.options, [&](OptionId each) { return test(option_row(each)); });
  return id == command.options.end() ? nullptr : &option_row(*id);
}

}  // namespace

const OptionRow* find_option(const CommandRow& command, std::string_view name) {
  return find_option_if(command, [&](const OptionRow& row) { return row.name == name; });
}

const OptionRow* find_letter(const CommandRow& command, char letter) {
  return find_option_if(command, [&](const OptionRow& row) { return row.letter == letter; });
}

}  // namespace brindle
