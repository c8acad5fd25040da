#pragma once

// The order of the list. Main thread; rows are those of the list. Sorting and moving far in a long list are jobs.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "app/jobs_controller.h"
#include "list/row_set.h"

namespace brindle {

class OrderController {
 public:
  OrderController(MutableWindowModel& model, JobsController& jobs) : model_(model), jobs_(jobs) {}

  /// These rows stay with their items from now on: files().chosen() says where they are. While a job has the list,
  /// nothing happens.
  void follow_rows(ChosenRows rows);

  /// Sorts by a column of the table ("filenameWithExtension", "newFilename", "fileLocation", …); ties keep their order.
  /// The columns of photographs read files, and are sorted by a job always.
  void sort_by_column(std::string_view column, bool ascending);

  /// Puts rows, in their order, before another one (the number of rows: at the end).
  void move_rows(const RowSet& rows, std::size_t before);
  void move_rows_up(const RowSet& rows);
  void move_rows_down(const RowSet& rows);

 private:
  bool can_move(const RowSet& rows) const;
  void put_into_order(std::size_t first, std::vector<std::uint32_t> order);

  MutableWindowModel& model_;
  JobsController& jobs_;
};

}  // namespace brindle
