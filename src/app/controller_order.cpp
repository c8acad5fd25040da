// The order of the list.

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "app/brindle_app_controller.h"
#include "pipeline/file_order.h"
#include "platform/file_name.h"

namespace brindle {
namespace {

// Sorting this many rows takes some ten milliseconds; more is a job.
constexpr std::size_t most_rows_sorted_at_once = 20'000;

constexpr auto photo_columns = std::to_array<std::string_view>({"make", "model", "dimensions", "pictureTaken"});
constexpr auto item_columns = std::to_array<std::string_view>(
    {"filename", "filenameWithExtension", "fileExtension", "fileLocation", "fileWithPath", "fileType", "newFilename"});

// Thrown while keys are made: the list has not been touched yet.
struct Cancelled {};

bool is_photo_column(std::string_view column) {
  return std::ranges::find(photo_columns, column) != photo_columns.end();
}

void append_text(std::u16string_view text, std::string& key) {
  append_sort_key(to_utf8(text), key);
}

// A number as a text that sorts by value.
void append_number(std::int64_t number, std::string& key) {
  append_sort_key(std::to_string(number), key);
}

AppendRowKey photo_key(const FileList& files, PhotoFieldsCache& cache, std::string_view column) {
  return [&files, &cache, column = std::string(column)](std::size_t row, std::string& key) {
    const PhotoFields fields = cache.fields(files, row);
    if (column == "make") return append_text(fields.make, key);
    if (column == "model") return append_text(fields.model, key);
    if (column == "dimensions") return append_number(fields.dimensionValue, key);
    // Pictures from before 1970 too, and those without a date first.
    constexpr std::int64_t long_ago = 100'000'000'000'000;
    if (fields.pictureTaken) append_number(long_ago + fields.pictureTaken->time_since_epoch().count(), key);
  };
}

AppendRowKey item_key(const FileList& files, std::string_view column) {
  if (column == "filenameWithExtension") {
    return [&files](std::size_t row, std::string& key) { append_sort_key(files[row].name(), key); };
  }
  if (column == "fileLocation") {
    return [&files, ranks = folder_ranks(files)](std::size_t row, std::string& key) {
      append_number(ranks[files[row].folder], key);
    };
  }
  if (column == "newFilename") {
    return [&files](std::size_t row, std::string& key) { append_text(files.new_filename(row), key); };
  }
  return [&files, column = std::string(column), item = FileSystemItem()](std::size_t row, std::string& key) mutable {
    files.read_without_new_name(row, item);
    append_text(item.objectForKey(column).value_or(u""), key);
  };
}

}  // namespace

void BrindleAppController::sort_by_column(std::string_view column, bool ascending) {
  const bool photo = is_photo_column(column);
  if (!photo && std::ranges::find(item_columns, column) == item_columns.end()) return;
  if (defer([this, column = std::string(column), ascending] { sort_by_column(column, ascending); })) return;
  if (!photo && files_.size() <= most_rows_sorted_at_once) {
    sort_rows(column, ascending, {});
    sorted_column_ = column;
    sorted_ascending_ = ascending;
    return tell(Changed::rows | Changed::state);
  }
  JobCall call;
  call.job = Job::sorting;
  const auto is_sorted = std::make_shared<bool>(false);
  call.work = [this, column = std::string(column), ascending, is_sorted](const JobControl& control) {
    try {
      sort_rows(column, ascending, control);
      *is_sorted = true;
    } catch (const Cancelled&) {
      return;
    }
  };
  call.finished = [this, column = std::string(column), ascending, is_sorted] {
    if (!*is_sorted) return;
    sorted_column_ = column;
    sorted_ascending_ = ascending;
  };
  start_job(std::move(call));
}

// Also on a job's thread.
void BrindleAppController::sort_rows(std::string_view column, bool ascending, const JobControl& control) {
  const AppendRowKey key =
      is_photo_column(column) ? photo_key(files_, *photo_fields_, column) : item_key(files_, column);
  ProgressThrottle throttle(control, files_.size());
  std::size_t done = 0;
  const auto append_key = [&](std::size_t row, std::string& bytes) {
    if (control.cancelled()) throw Cancelled();
    throttle.step(++done, [&] { return files_.path(row); });
    key(row, bytes);
  };
  sort_by_keys(files_, append_key, ascending);
}

// Puts the rows into an order, and says where the given ones are now.
std::vector<std::size_t> BrindleAppController::apply_order(std::vector<std::uint32_t> order,
                                                           std::span<const std::size_t> sorted_rows) {
  std::vector<bool> is_moved(order.size());
  for (const std::size_t row : sorted_rows) is_moved[row] = true;
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < order.size(); ++place) {
    if (is_moved[order[place]]) places.push_back(place);
  }
  files_.reorder(std::move(order));
  sorted_column_.clear();
  tell(Changed::rows | Changed::state);
  return places;
}

std::vector<std::size_t> BrindleAppController::move_rows(std::span<const std::size_t> sorted_rows, std::size_t before) {
  if (state_.isExecuting || sorted_rows.empty() || sorted_rows.back() >= files_.size()) {
    return {sorted_rows.begin(), sorted_rows.end()};
  }
  std::vector<bool> is_moved(files_.size());
  for (const std::size_t row : sorted_rows) is_moved[row] = true;
  std::vector<std::uint32_t> order;
  order.reserve(files_.size());
  const auto take = [&](std::size_t first, std::size_t last) {
    for (std::size_t row = first; row < last; ++row) {
      if (!is_moved[row]) order.push_back(static_cast<std::uint32_t>(row));
    }
  };
  const std::size_t place = std::min(before, files_.size());
  take(0, place);
  for (const std::size_t row : sorted_rows) order.push_back(static_cast<std::uint32_t>(row));
  take(place, files_.size());
  return apply_order(std::move(order), sorted_rows);
}

// Each row changes places with the one above it; rows at the very top stay.
std::vector<std::size_t> BrindleAppController::move_rows_up(std::span<const std::size_t> sorted_rows) {
  if (state_.isExecuting || sorted_rows.empty() || sorted_rows.back() >= files_.size()) {
    return {sorted_rows.begin(), sorted_rows.end()};
  }
  std::vector<std::uint32_t> order(files_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::size_t top = 0;
  for (const std::size_t row : sorted_rows) {
    if (row == top) {
      ++top;
    } else {
      std::swap(order[row - 1], order[row]);
    }
  }
  return apply_order(std::move(order), sorted_rows);
}

std::vector<std::size_t> BrindleAppController::move_rows_down(std::span<const std::size_t> sorted_rows) {
  if (state_.isExecuting || sorted_rows.empty() || sorted_rows.back() >= files_.size()) {
    return {sorted_rows.begin(), sorted_rows.end()};
  }
  std::vector<std::uint32_t> order(files_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::size_t bottom = files_.size();
  for (std::size_t i = sorted_rows.size(); i-- > 0;) {
    const std::size_t row = sorted_rows[i];
    if (row + 1 == bottom) {
      --bottom;
    } else {
      std::swap(order[row], order[row + 1]);
    }
  }
  return apply_order(std::move(order), sorted_rows);
}

}  // namespace brindle
