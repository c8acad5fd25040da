#include "cli/command_table.h"

#include <algorithm>
#include <array>

#include "cli/commands.h"
#include "platform/translation.h"

namespace brindle {
namespace {

using enum OptionId;

constexpr auto options = std::to_array<OptionRow>({
    {files, "files", 0, "", to_translate("rename files, and packages and links (the default)")},
    {folders, "folders", 0, "",
     to_translate("rename folders instead: those below each PATH, or each PATH itself with --no-subfolders")},
    {subfolders, "subfolders", 0, "", to_translate("look into folders and all they hold (the default)")},
    {no_subfolders, "no-subfolders", 0, "", to_translate("do not look into folders")},
    {hidden, "hidden", 0, "", to_translate("take names that begin with \".\" too")},
    {no_preserve_root, "no-preserve-root", 0, "", to_translate("take / with all that it holds, too")},
    {sort, "sort", 0, "name|folder|none",
     to_translate("the order of the list, for counting: by name, by folder and name, or as found (none)")},
    {from, "from", 0, "FILE", to_translate("read more PATHs from FILE, one a line; \"-\" is standard input")},
    {nul, "null", '0', "", to_translate("the PATHs read with --from end with NUL, as find -print0 writes them")},
    {set, "set", 0, "KEY=VALUE",
     to_translate("set any key of the settings record, after all else (see brindle settings); repeatable")},
    {profile, "profile", 0, "FILE",
     to_translate("start from the settings of a profile; what is given here counts more")},
    {rules, "rules", 0, "FILE", to_translate("run the chain of a rule file, instead of METHODs")},
    {list, "list", 0, "FILE",
     to_translate("rename as a tab-delimited list says (name, new name, location); \"-\" is standard input")},
    {on_problem, "on-problem", 0, "skip|none|number",
     to_translate("what happens when items cannot get their names: the others are renamed (skip, the default), nothing "
                  "is (none), or a name that is taken is numbered (number)")},
    {number_pattern, "number-pattern", 0, "TEXT",
     to_translate("what --on-problem number puts behind the name; \"{}\" is the number, from 2 on (\" ({})\")")},
    {permute, "permute", 0, "",
     to_translate("take a name for free when the item that has it is renamed in the same run: swaps, cycles, shifts")},
    {from_elsewhere, "from-elsewhere", 0, "",
     to_translate("let a log that does not lie in the log folder move items to other folders, too")},
    {dry_run, "dry-run", 0, "", to_translate("show what would happen, and touch nothing")},
    {no_name, "no-name", 0, "", to_translate("leave out the column of names")},
    {no_new_name, "no-new-name", 0, "", to_translate("leave out the column of new names")},
    {no_location, "no-location", 0, "", to_translate("leave out the column of folders")},
    {full_paths, "full-paths", 0, "", to_translate("write whole paths instead of names, and no column of folders")},
    {no_header, "no-header", 0, "", to_translate("leave out the line with the titles of the columns")},
    {all, "all", 'a', "", to_translate("show what stays as it is too")},
    {json, "json", 0, "", to_translate("print one JSON object a line, for programs")},
    {yes, "yes", 'y', "", to_translate("do not ask")},
    {quiet, "quiet", 'q', "", to_translate("print errors only")},
    {no_color, "no-color", 0, "", to_translate("no colour, on a terminal either; so does NO_COLOR in the environment")},
    {help, "help", 'h', "", to_translate("show this help")},
    {version, "version", 0, "", to_translate("show the version")},
});

constexpr auto preview_options =
    std::to_array<OptionId>({files,   folders, subfolders, no_subfolders,  hidden,  sort, from, nul,   list,     rules,
                             profile, set,     on_problem, number_pattern, permute, all,  json, quiet, no_color, help});
constexpr auto rename_options = std::to_array<OptionId>(
    {files, folders, subfolders, no_subfolders, hidden,     no_preserve_root, sort,    from, nul,
     list,  rules,   profile,    set,           on_problem, number_pattern,   permute, all,  yes,
     json,  quiet,   no_color,   help});
constexpr auto export_options = std::to_array<OptionId>(
    {no_name,        no_new_name, no_location, full_paths, no_header, files,    folders, subfolders, no_subfolders,
     hidden,         sort,        from,        nul,        list,      rules,    profile, set,        on_problem,
     number_pattern, permute,     yes,         json,       quiet,     no_color, help});
constexpr auto profile_save_options =
    std::to_array<OptionId>({files, folders, subfolders, no_subfolders, profile, set, on_problem, number_pattern,
                             permute, yes, json, quiet, no_color, help});
constexpr auto profile_show_options = std::to_array<OptionId>({all, json, quiet, no_color, help});
constexpr auto rules_save_options = std::to_array<OptionId>({set, yes, json, quiet, no_color, help});
constexpr auto undo_options = std::to_array<OptionId>({from_elsewhere, dry_run, all, yes, json, quiet, no_color, help});
constexpr auto redo_options = std::to_array<OptionId>({dry_run, all, yes, json, quiet, no_color, help});
constexpr auto list_options = std::to_array<OptionId>({json, quiet, no_color, help});
constexpr auto plain_options = std::to_array<OptionId>({quiet, no_color, help});

constexpr std::string_view grammar = to_translate(
    "Options and PATHs come first. The first word that names a method begins the method, which "
    "ends the PATHs; \"then\" begins the next one. Options of the command may also stand behind a "
    "method. A PATH that is called like a method is written with a slash, ./insert, or behind "
    "\"--\", where it is a PATH when it exists. \"--\" ends options: what follows may begin with "
    "\"-\". Everything else in a PATH stands for itself, whatever it holds. A symbolic link is "
    "renamed itself, also with a slash behind it; link/. is the folder that it leads to.\n\nIn the "
    "texts of a method \"/\" becomes \":\", since no name can hold it.");

constexpr std::string_view profile_save_about = to_translate(
    "Without METHOD the profile holds the settings alone. Whether files or folders are renamed, "
    "and whether subfolders are, is part of it. A file that is there already is replaced with "
    "--yes, or when a terminal says so. The window looks for profiles by their extension, "
    ".brprofile; brindle takes any name.\n\nbrindle rename --profile FILE PATH... runs its method; "
    "METHODs written behind PATH take its place, with the profile's settings.");
constexpr std::string_view rules_save_about = to_translate(
    "--set counts for each METHOD, as it does in brindle preview. A file that is there already is "
    "replaced with --yes, or when a terminal says so. The window looks for rule files by their "
    "extension, .brrule; brindle takes any name.\n\nbrindle rename --rules FILE PATH... runs the "
    "chain.");
constexpr std::string_view export_about = to_translate(
    "Without METHOD the new names are empty: write them with another program, and rename with "
    "brindle rename --list FILE. A list that is to be read back has all three columns, and names, "
    "not whole paths. An item that cannot be renamed has its status instead of a new name.\n\nA "
    "file that is there already is replaced with --yes, or when a terminal says so. \"-\" is "
    "standard output.");

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
    {"rename --list list.txt", "", ""},
    {"rename --rules clean.brrule Music", "", ""},
});
constexpr auto profile_save_examples = std::to_array<Example>({
    {"profile save trip.brprofile insert 'Brest - '", "", ""},
    {"profile save lower.brprofile --folders case --lower", "", ""},
});
constexpr auto profile_show_examples = std::to_array<Example>({{"profile show trip.brprofile", "", ""}});
constexpr auto rules_save_examples = std::to_array<Example>({
    {"rules save clean.brrule replace _ ' ' --all then case --proper", "", ""},
});
constexpr auto rules_show_examples = std::to_array<Example>({{"rules show clean.brrule", "", ""}});
constexpr auto export_examples = std::to_array<Example>({
    {"export list.txt Photos", "", ""},
    {"export list.txt --sort name Photos date", "", ""},
    {"export - Photos | less", "", ""},
});
constexpr auto undo_examples = std::to_array<Example>({
    {"undo", "", ""},
    {"undo --dry-run", "", ""},
    {"undo 'Log 21-11-2026 10-00-00-12.xml'", "", ""},
});
constexpr auto redo_examples = std::to_array<Example>({
    {"redo", "", ""},
    {"redo 'Log 21-11-2026 10-00-00-12.xml'", "", ""},
});
constexpr auto logs_examples = std::to_array<Example>({
    {"logs", "", ""},
    {"logs 'Log 21-11-2026 10-00-00-12.xml'", "", ""},
});
constexpr auto settings_examples = std::to_array<Example>({{"settings", "", ""}, {"settings selectedTab", "", ""}});
constexpr auto fields_examples = std::to_array<Example>({{"fields", "", ""}, {"fields IMG_9.jpg", "", ""}});
constexpr auto help_examples = std::to_array<Example>({{"help rename", "", ""}, {"help insert", "", ""}});

constexpr auto commands = std::to_array<CommandRow>({
    {"preview", "[OPTION]... PATH... METHOD [then METHOD]...", to_translate("show the new names and touch nothing"),
     grammar, Operands::paths_and_methods, preview_options, run_preview, preview_examples},
    {"rename", "[OPTION]... PATH... METHOD [then METHOD]...",
     to_translate("show the new names, ask, rename, and keep a log for undo"), grammar, Operands::paths_and_methods,
     rename_options, run_rename, rename_examples},
    {"export", "FILE [OPTION]... PATH... [METHOD [then METHOD]...]",
     to_translate("write names, new names and folders into a tab-delimited list"), export_about,
     Operands::file_paths_and_methods, export_options, run_export, export_examples},
    {"undo", "[OPTION]... [LOG]", to_translate("take a renaming back: the newest, or that of LOG"),
     to_translate("LOG is a path, or the name of a log in the log folder (see brindle logs). Each item goes back "
                  "to its old name, the last renamed first; nothing is ever replaced. When all are back, the log "
                  "goes to the folder Undone of the log folder; else it stays, and undoing it again tries the "
                  "rest once more. While a renaming is going on, or one that was interrupted cannot be finished, "
                  "nothing is undone."),
     Operands::log, undo_options, run_undo, undo_examples},
    {"redo", "[OPTION]... [LOG]",
     to_translate("do a renaming again that was undone: the one undone last, or that of LOG"),
     to_translate(
         "LOG is a path, or the name of a log in the folder Undone of the log folder (see brindle logs). Items "
         "that have their new names already keep them, and what cannot be renamed says why. The renaming has "
         "a log of its own, as any other; when all of it was done again, the undone log goes."),
     Operands::log, redo_options, run_redo, redo_examples},
    {"logs", "[OPTION]... [LOG]", to_translate("list the logs of past renamings, newest first; with LOG, its names"),
     to_translate("Of each renaming: when it was, how many items it renamed, in which folder (or below which), the "
                  "first old and new name, and whether it was undone. LOG is a path, or the name of a log in the log "
                  "folder or its folder Undone."),
     Operands::log, list_options, run_logs, logs_examples},
    {"recover",
     "[OPTION]...",
     to_translate("finish the logs of interrupted runs"),
     to_translate("What a run that was killed had renamed by then becomes a log that can be undone. Rename, undo "
                  "and logs do this by themselves."),
     Operands::none,
     plain_options,
     run_recover,
     {}},
    {"profile save", "FILE [OPTION]... [METHOD]",
     to_translate("keep settings, and a method with its options, in a file"), profile_save_about,
     Operands::file_and_methods, profile_save_options, run_profile_save, profile_save_examples},
    {"profile show", "FILE [OPTION]...", to_translate("show the settings of a profile"),
     to_translate("On a terminal only the settings that are not as brindle starts with, unless --all asks for "
                  "the rest. A line is KEY=VALUE, as --set takes it."),
     Operands::file, profile_show_options, run_profile_show, profile_show_examples},
    {"rules save", "FILE [OPTION]... METHOD [then METHOD]...", to_translate("keep a chain of methods in a file"),
     rules_save_about, Operands::file_and_methods, rules_save_options, run_rules_save, rules_save_examples},
    {"rules show", "FILE [OPTION]...", to_translate("show the methods of a rule file, with what they do"), "",
     Operands::file, list_options, run_rules_show, rules_show_examples},
    {"fields", "[OPTION]... [FILE]", to_translate("list the tokens of photo and audio masks; with FILE, their values"),
     to_translate("Dates and times are written as the photo method does without options."), Operands::optional_file,
     list_options, run_fields, fields_examples},
    {"settings", "[OPTION]... [KEY]...", to_translate("list the keys for --set: type, default, meaning"), "",
     Operands::keys, list_options, run_settings, settings_examples},
    {"help", "[COMMAND or METHOD]", to_translate("show help"),
     to_translate("man-page, bash-completion, zsh-completion and fish-completion, instead of a word, print what "
                  "belongs into the folders of man and of these shells."),
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

bool begins_commands(std::string_view word) {
  return std::ranges::any_of(commands, [&](const CommandRow& row) {
    return row.word.starts_with(word) && row.word.substr(word.size()).starts_with(' ');
  });
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
