#include "cli/console.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "cli/terminal_text.h"
#include "platform/cancellation.h"
#include "platform/translation.h"

namespace brindle {
namespace {

constexpr Style colored = {"\x1b[1m", "\x1b[31m", "\x1b[1;32m", "\x1b[2m", "\x1b[33m", "\x1b[7m", "\x1b[0m"};

bool wants_no_color() {
  const char* no_color = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return (no_color != nullptr && *no_color != '\0') || (terminal != nullptr && std::string_view(terminal) == "dumb");
}

std::size_t columns_of(int descriptor) {
  winsize size{};
  return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// The first line of standard input, read byte by byte so that nothing behind it is taken. Empty when cancelled.
std::string read_line() {
  std::string line;
  char c = 0;
  while (!is_cancelled()) {
    const ssize_t got = ::read(STDIN_FILENO, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || c == '\n') break;
    line.push_back(c);
  }
  return is_cancelled() ? std::string() : line;
}

}  // namespace

Console::Console()
    : out_is_terminal_(::isatty(STDOUT_FILENO) == 1),
      error_is_terminal_(::isatty(STDERR_FILENO) == 1),
      in_is_terminal_(::isatty(STDIN_FILENO) == 1),
      width_(columns_of(STDOUT_FILENO)),
      out_(STDOUT_FILENO),
      error_(STDERR_FILENO) {
  set_color(true);
}

void Console::set_color(bool on) {
  style_ = on && out_is_terminal_ && !wants_no_color() ? colored : Style{};
}

void Console::write_error_line(std::string_view prefix, std::string_view line) {
  out_.flush();
  std::string& text = error_.buffer();
  text += prefix;
  if (error_is_terminal_) {
    append_escaped_for_terminal(line, text);
  } else {
    append_on_one_line(line, text);
  }
  text += '\n';
  error_.flush();
}

void Console::error(std::string_view line) {
  write_error_line("brindle: ", line);
}

void Console::note(std::string_view line) {
  if (!quiet_) write_error_line("", line);
}

void Console::append_shown(std::string_view bytes, std::string& text) const {
  if (out_is_terminal_) {
    append_escaped_for_terminal(bytes, text);
  } else {
    append_on_one_line(bytes, text);
  }
}

std::string Console::shown(std::string_view bytes) const {
  std::string text;
  append_shown(bytes, text);
  return text;
}

bool Console::ask(std::string_view question, std::string_view yes) {
  out_.flush();
  (error_ << question << " ").flush();
  const std::string answer = read_line();
  if (is_cancelled()) (error_ << "\n").flush();
  return !answer.empty() && yes.find(answer.front()) != std::string_view::npos;
}

ProgressLine::ProgressLine(const Console& console, std::string_view what)
    : what_(what), on_(!console.quiet() && ::isatty(STDERR_FILENO) == 1) {}

ProgressLine::~ProgressLine() {
  if (shown_) (Output(STDERR_FILENO) << "\r\x1b[K").flush();
}

void ProgressLine::report(const Progress& progress) {
  if (!on_ || progress.last) return;
  shown_ = true;
  const std::string count = progress.total == 0 ? fmt::format("{} {}", what_, progress.done)
                                                : translated("{} {} of {}", what_, progress.done, progress.total);
  const std::size_t columns = columns_of(STDERR_FILENO);
  const std::size_t room = columns > count.size() + 4 ? columns - count.size() - 4 : 0;
  const std::string path = fit_end(escape_for_terminal(progress.path), room);
  (Output(STDERR_FILENO) << "\r" << count << "  " << path << "\x1b[K").flush();
}

}  // namespace brindle
