#include "cli/method_words.h"

#include <algorithm>
#include <vector>

#include "cli/method_rows.h"

namespace brindle {

std::span<const MethodWord> method_words() {
  static const std::vector<MethodWord> rows = [] {
    std::vector<MethodWord> all;
    for (const auto part : {text_method_rows(), date_method_rows(), general_method_rows(), metadata_method_rows()}) {
      all.insert(all.end(), part.begin(), part.end());
    }
    return all;
  }();
  return rows;
}

const MethodWord* find_method(std::string_view word) {
  const auto rows = method_words();
  const auto row = std::ranges::find(rows, word, &MethodWord::word);
  return row == rows.end() ? nullptr : &*row;
}

const MethodOption* find_option(const MethodWord& method, std::string_view name) {
  const auto row = std::ranges::find(method.options, name, &MethodOption::name);
  return row == method.options.end() ? nullptr : &*row;
}

}  // namespace brindle
