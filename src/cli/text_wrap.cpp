#include "cli/text_wrap.h"

#include <algorithm>

#include "cli/display_width.h"

namespace brindle {

void append_wrapped(std::string_view text, std::size_t indent, std::size_t width, std::string& out) {
  std::size_t column = indent;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t size = display_width(word);
    if (column > indent && column + 1 + size > width) {
      out.append("\n").append(indent, ' ');
      column = indent;
    }
    if (column > indent) {
      out += ' ';
      ++column;
    }
    out += word;
    column += size;
  }
  out += '\n';
}

}  // namespace brindle
