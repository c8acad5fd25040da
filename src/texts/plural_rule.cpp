#include "texts/plural_rule.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace brindle {
namespace {

struct Operator {
  std::string_view sign;
  int binding;
  std::uint64_t (*apply)(std::uint64_t left, std::uint64_t right);
};
using Number = std::uint64_t;

// Signs that begin like shorter ones stand before them.
constexpr auto operators = std::to_array<Operator>({
    {"||", 1, [](Number a, Number b) -> Number { return a != 0 || b != 0 ? 1 : 0; }},
    {"&&", 2, [](Number a, Number b) -> Number { return a != 0 && b != 0 ? 1 : 0; }},
    {"==", 3, [](Number a, Number b) -> Number { return a == b ? 1 : 0; }},
    {"!=", 3, [](Number a, Number b) -> Number { return a != b ? 1 : 0; }},
    {"<=", 4, [](Number a, Number b) -> Number { return a <= b ? 1 : 0; }},
    {">=", 4, [](Number a, Number b) -> Number { return a >= b ? 1 : 0; }},
    {"<", 4, [](Number a, Number b) -> Number { return a < b ? 1 : 0; }},
    {">", 4, [](Number a, Number b) -> Number { return a > b ? 1 : 0; }},
    {"+", 5, [](Number a, Number b) -> Number { return a + b; }},
    {"-", 5, [](Number a, Number b) -> Number { return a - b; }},
    {"*", 6, [](Number a, Number b) -> Number { return a * b; }},
    {"/", 6, [](Number a, Number b) -> Number { return b == 0 ? 0 : a / b; }},
    {"%", 6, [](Number a, Number b) -> Number { return b == 0 ? 0 : a % b; }},
});

/// An expression of C over the number n, worked out while it is read.
class Expression {
 public:
  Expression(std::string_view text, Number n) : rest_(text), n_(n) {}

  Number value() {
    const Number condition = value_above(0);
    if (!take("?")) return condition;
    const Number chosen = value();
    take(":");
    const Number other = value();
    return condition != 0 ? chosen : other;
  }

 private:
  bool take(std::string_view sign) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    if (!rest_.starts_with(sign)) return false;
    rest_.remove_prefix(sign.size());
    return true;
  }

  // A value and all that operators of more than `binding` make of it.
  Number value_above(int binding) {
    Number left = operand();
    while (true) {
      const auto* const found = std::ranges::find_if(
          operators, [&](const Operator& each) { return each.binding > binding && take(each.sign); });
      if (found == operators.end()) return left;
      left = found->apply(left, value_above(found->binding));
    }
  }

  Number operand() {
    if (take("!")) return operand() == 0 ? 1 : 0;
    if (take("n")) return n_;
    if (take("(")) {
      const Number inner = value();
      take(")");
      return inner;
    }
    Number number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
  }

  std::string_view rest_;
  Number n_;
};

}  // namespace

std::size_t plural_form(std::string_view plural_forms, std::uint64_t number) {
  constexpr std::string_view begin = "plural=";
  const std::size_t at = plural_forms.find(begin);
  if (at == std::string_view::npos) return 0;
  return Expression(plural_forms.substr(at + begin.size()), number).value();
}

}  // namespace brindle
