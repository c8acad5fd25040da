#include "plist/unique_entries.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace brindle {

PropertyDictionary dictionary_of_pairs(std::vector<PropertyEntry>&& pairs) {
  std::vector<std::size_t> by_key(pairs.size());
  std::iota(by_key.begin(), by_key.end(), std::size_t{0});
  std::ranges::stable_sort(by_key, {}, [&](std::size_t i) -> const std::u16string& { return pairs[i].key; });
  std::vector<bool> dropped(pairs.size());
  std::size_t first = 0;
  for (std::size_t i = 1; i < by_key.size(); ++i) {
    if (pairs[by_key[i]].key != pairs[by_key[first]].key) {
      first = i;
      continue;
    }
    pairs[by_key[first]].value = std::move(pairs[by_key[i]].value);
    dropped[by_key[i]] = true;
  }
  PropertyDictionary dictionary;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (!dropped[i]) dictionary.append(pairs[i].key, std::move(pairs[i].value));
  }
  return dictionary;
}

}  // namespace brindle
