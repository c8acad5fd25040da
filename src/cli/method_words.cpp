#include "cli/method_words.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "cli/method_rows.h"

namespace brindle {
namespace {

// Letters to insert, delete, change, or swap with their neighbour.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) steps[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) steps[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, change});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
    }
  }
  return steps[a.size()][b.size()];
}

}  // namespace

std::string_view closest_word(std::string_view word, std::span<const std::string_view> candidates) {
  if (word.size() > 40) return {};
  std::string_view best;
  std::size_t best_distance = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (const std::string_view candidate : candidates) {
    const bool begins = word.size() >= 3 && candidate.starts_with(word);
    const std::size_t steps = begins ? 1 : distance(word, candidate);
    if (steps < best_distance) {
      best = candidate;
      best_distance = steps;
    }
  }
  return best;
}

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

std::vector<std::string_view> words_of_methods() {
  std::vector<std::string_view> words;
  for (const MethodWord& row : method_words()) words.push_back(row.word);
  return words;
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
