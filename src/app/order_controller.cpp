#include "app/order_controller.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "list/file_order.h"
#include "platform/file_name.h"

namespace brindle {
namespace {

// Sorting this many rows takes some ten milliseconds; more is a job.
constexpr std::size_t most_rows_sorted_at_once = 20'000;
// Putting rows into an order that is known is quicker.
constexpr std::size_t most_rows_moved_at_once = 50'000;

constexpr auto photo_columns = std::to_array<std::string_view>({"make", "model", "dimensions", "pictureTaken"});
constexpr auto item_columns = std::to_array<std::string_view>(
    {"filename", "filenameWithExtension", "fileExtension", "fileLocation", "fileWithPath", "fileType", "newFilename"});

auto place_in(std::vector<std::uint32_t>& order, std::size_t place) {
  return order.begin() + static_cast<std::ptrdiff_t>(place);
}

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

// On a job's thread too.
void sort_rows(FileList& files, PhotoFieldsCache& cache, std::string_view column, bool ascending,
               const JobControl& control) {
  const AppendRowKey key = is_photo_column(column) ? photo_key(files, cache, column) : item_key(files, column);
  ProgressThrottle throttle(control, files.size());
  std::size_t done = 0;
  const auto append_key = [&](std::size_t row, std::string& bytes) {
    if (control.cancelled()) throw Cancelled();
    throttle.step(++done, [&] { return files.path(row); });
    key(row, bytes);
  };
  sort_by_keys(files, append_key, ascending);
}

}  // namespace

void OrderController::sort_by_column(std::string_view column, bool ascending) {
  const bool photo = is_photo_column(column);
  if (!photo && std::ranges::find(item_columns, column) == item_columns.end()) return;
  jobs_.command([this, photo, wanted = Sorting{std::string(column), ascending}] {
    model_.is_list_worked_on = true;
    const auto is_sorted = std::make_shared<bool>(false);
    JobCall call;
    call.job = Job::sorting;
    call.work = [this, wanted, is_sorted](const JobControl& control) {
      try {
        sort_rows(model_.files(), model_.photo_fields(), wanted.column, wanted.ascending, control);
        *is_sorted = true;
      } catch (const Cancelled&) {
        return;
      }
    };
    call.finished = [this, wanted, is_sorted] {
      if (*is_sorted) model_.sorting() = wanted;
    };
    jobs_.run(std::move(call), photo || model_.files().size() > most_rows_sorted_at_once);
  });
}

void OrderController::follow_rows(ChosenRows rows) {
  if (!model_.state().isExecuting) model_.files().choose(std::move(rows));
}

// Moving

// The rows from `first` on; what lies before and behind the order stays.
void OrderController::put_into_order(std::size_t first, std::vector<std::uint32_t> order) {
  model_.sorting().column.clear();
  model_.is_list_worked_on = true;
  const bool is_long = order.size() > most_rows_moved_at_once;
  JobCall call;
  call.job = Job::sorting;
  call.work = [this, first, order = std::move(order)](const JobControl&) mutable {
    model_.files().reorder(std::move(order), first);
  };
  jobs_.run(std::move(call), is_long);
}

bool OrderController::can_move(const RowSet& rows) const {
  return !model_.state().isExecuting && !rows.empty() && !rows.next(model_.files().size());
}

void OrderController::move_rows(const RowSet& rows, std::size_t before) {
  if (!can_move(rows)) return;
  const std::size_t place = std::min(before, model_.files().size());
  const std::size_t first = std::min(*rows.next(0), place);
  const std::size_t last = std::max(rows.last() + 1, place);
  std::vector<std::uint32_t> order;
  order.reserve(last - first);
  const auto take = [&](std::size_t from, std::size_t to, bool moved) {
    for (std::size_t row = from; row < to; ++row) {
      if (rows.contains(row) == moved) order.push_back(static_cast<std::uint32_t>(row - first));
    }
  };
  take(first, place, false);
  take(first, last, true);
  take(place, last, false);
  put_into_order(first, std::move(order));
}

// Each run of rows changes places with the row above it; one at the very top stays.
void OrderController::move_rows_up(const RowSet& rows) {
  if (!can_move(rows)) return;
  const std::size_t first = *rows.next(0) == 0 ? 0 : *rows.next(0) - 1;
  std::vector<std::uint32_t> order(rows.last() + 1 - first);
  std::iota(order.begin(), order.end(), 0U);
  for (const RowRange run : rows.ranges({0, model_.files().size()})) {
    if (run.first > 0)
      std::rotate(place_in(order, run.first - 1 - first), place_in(order, run.first - first),
                  place_in(order, run.last - first));
  }
  put_into_order(first, std::move(order));
}

void OrderController::move_rows_down(const RowSet& rows) {
  if (!can_move(rows)) return;
  const std::size_t first = *rows.next(0);
  const std::size_t last = std::min(rows.last() + 2, model_.files().size());
  std::vector<std::uint32_t> order(last - first);
  std::iota(order.begin(), order.end(), 0U);
  for (const RowRange run : rows.ranges({0, model_.files().size()})) {
    if (run.last < model_.files().size())
      std::rotate(place_in(order, run.first - first), place_in(order, run.last - first),
                  place_in(order, run.last + 1 - first));
  }
  put_into_order(first, std::move(order));
}

}  // namespace brindle
