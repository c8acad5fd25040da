#pragma once

// The terminal, or the pipes that stand for it: what goes to standard output and standard error, and how; questions;
// the progress line. One thread, but for progress reports, which may come from a job's thread while the main thread
// waits.

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/job.h"
#include "platform/output.h"

namespace brindle {

/// What is set off, and how: empty strings without colour.
struct Style {
  std::string_view heading;
  std::string_view removed;  ///< what leaves a name
  std::string_view added;    ///< what comes into one
  std::string_view faint;
  std::string_view problem;
  std::string_view reversed;  ///< besides one of the others
  std::string_view plain;     ///< ends each of them
};

class Console {
 public:
  Console();

  /// Turns colour off, and everything that is not asked for.
  void set_color(bool on);
  void set_quiet(bool on) { quiet_ = on; }

  Output& out() { return out_; }
  const Style& style() const { return style_; }
  bool out_is_terminal() const { return out_is_terminal_; }
  bool in_is_terminal() const { return in_is_terminal_; }
  bool quiet() const { return quiet_; }
  /// Columns of standard output; 80 where it is not a terminal.
  std::size_t width() const { return width_; }

  /// One line on standard error, "brindle: …". Bytes are escaped where it is a terminal.
  void error(std::string_view line);
  /// One line on standard error that is left out when quiet.
  void note(std::string_view line);

  /// A line that goes on with an error(): bytes behind `prefix`.
  void append_error_line(std::string_view prefix, std::string_view bytes) { write_error_line(prefix, bytes); }

  /// A name or path as it is to be shown on standard output.
  void append_shown(std::string_view bytes, std::string& text) const;
  std::string shown(std::string_view bytes) const;

  /// Asks on standard error and reads a line. True for an answer that begins with one of `yes`; anything else, the end
  /// of the input and Ctrl-C are no.
  bool ask(std::string_view question, std::string_view yes = "yY");

 private:
  void write_error_line(std::string_view prefix, std::string_view line);

  bool out_is_terminal_;
  bool error_is_terminal_;
  bool in_is_terminal_;
  bool quiet_ = false;
  std::size_t width_;
  Style style_;
  Output out_;
  Output error_;
};

/// The progress line, on standard error when that is a terminal and nobody asked for quiet. Removed by its destructor.
class ProgressLine : public ProgressSink {
 public:
  /// `what` is "Reading folders", say.
  ProgressLine(const Console& console, std::string_view what);
  ~ProgressLine() override;
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void report(const Progress& progress) override;

 private:
  std::string what_;
  bool on_;
  bool shown_ = false;
};

}  // namespace brindle
