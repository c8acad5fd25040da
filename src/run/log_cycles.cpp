#include "run/log_cycles.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "text/hash.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

bool lies_in_one_folder(const LogEntry& entry) {
  return entry.fault.empty() && entry.source_folder == entry.target_folder;
}

// A quick look first: nearly all names differ in their first letters.
bool differ_in_case_at_most(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const auto is_alike = [](char x, char y) { return ((x ^ y) & ~0x20) == 0 || (x & y & 0x80) != 0; };
  const std::size_t shorter = std::min(a.size(), b.size());
  return std::equal(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(shorter), b.begin(), is_alike) &&
         differ_in_case_only(a, b);
}

std::uint64_t hash_place(std::string_view folder, std::string_view name) {
  return hash_bytes(name, hash_bytes(folder));
}

}  // namespace

std::vector<LogCycle> cycles_in(const LogFile& log) {
  std::vector<LogCycle> cycles;
  LogCycle row;  // entries of which each took over the name of the next
  for (std::size_t i = 0; i < log.entries.size(); ++i) {
    const LogEntry& entry = log.entries[i];
    const bool goes_on = row.count > 0 && lies_in_one_folder(entry) &&
                         entry.source_folder == log.entries[i - 1].source_folder &&
                         differ_in_case_at_most(log.entries[i - 1].target_name, entry.source_name);
    if (!goes_on) row = {i, 0, true};
    if (!lies_in_one_folder(entry)) continue;
    ++row.count;
    if (goes_on) row.is_certain = row.is_certain && log.entries[i - 1].target_name == entry.source_name;
    const std::string_view first_name = log.entries[row.first].source_name;
    if (row.count < 2 || !differ_in_case_at_most(entry.target_name, first_name)) continue;
    const bool closes = entry.target_name == first_name;
    if (!closes && i + 1 < log.entries.size() && log.entries[i + 1].source_name == entry.target_name) continue;
    row.is_certain = row.is_certain && closes;
    cycles.push_back(row);
    row = {};
  }
  return cycles;
}

const LogCycle* cycle_around(const std::vector<LogCycle>& cycles, std::size_t entry) {
  auto found = std::ranges::upper_bound(cycles, entry, {}, &LogCycle::first);
  if (found == cycles.begin()) return nullptr;
  --found;
  return entry < found->first + found->count ? &*found : nullptr;
}

bool take_over_names(const LogFile& log) {
  std::vector<std::uint64_t> sources;
  sources.reserve(log.entries.size());
  for (const LogEntry& entry : log.entries) sources.push_back(hash_place(entry.source_folder, entry.source_name));
  std::ranges::sort(sources);
  return std::ranges::any_of(log.entries, [&](const LogEntry& entry) {
    return std::ranges::binary_search(sources, hash_place(entry.target_folder, entry.target_name));
  });
}

}  // namespace brindle
