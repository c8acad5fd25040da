#pragma once

// What the commands do. Each prints to the console and answers with what the shell is told; nothing is thrown but
// UsageError and what the standard library throws when memory ends. The whole command line runs on the thread that
// main() was called on, but for what catches Ctrl-C (platform/cancellation.h).

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/exit_code.h"

namespace brindle {

ExitCode run_preview(const CommandLine& line, Console& console);
ExitCode run_rename(const CommandLine& line, Console& console);
ExitCode run_export(const CommandLine& line, Console& console);
ExitCode run_undo(const CommandLine& line, Console& console);
ExitCode run_redo(const CommandLine& line, Console& console);
ExitCode run_logs(const CommandLine& line, Console& console);
ExitCode run_recover(const CommandLine& line, Console& console);
ExitCode run_profile_save(const CommandLine& line, Console& console);
ExitCode run_profile_show(const CommandLine& line, Console& console);
ExitCode run_rules_save(const CommandLine& line, Console& console);
ExitCode run_rules_show(const CommandLine& line, Console& console);
ExitCode run_fields(const CommandLine& line, Console& console);
ExitCode run_settings(const CommandLine& line, Console& console);
ExitCode run_help(const CommandLine& line, Console& console);

/// Everything: reads the words behind the program's name, runs the command, and turns whatever goes wrong into one line
/// and an exit code.
ExitCode run_program(int count, const char* const* words);

}  // namespace brindle
