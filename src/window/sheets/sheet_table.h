#pragma once

// A list of records in a sheet, sorted by a click on a column's title. Main thread.

#include <QTreeWidget>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

class SheetTable final : public QTreeWidget {
 public:
  struct Column {
    std::string_view identifier;  ///< as the controller knows it
    std::string_view title;       ///< key of the string table; "" for no title
    bool is_number = false;
  };
  /// Without titles there is no header.
  SheetTable(std::string_view name, std::string_view accessible_name, std::vector<Column> columns);

  /// What stands in place of rows when there are none: a key of the string table.
  void set_empty_text(std::string_view key);

  /// The arrow in the header; does not sort.
  void show_sorted_by(int column, bool ascending);

  using TextOf = std::function<std::string(std::string_view column, std::size_t row)>;
  /// Shows the records, UTF-8, with this row selected; tells nobody.
  void show_rows(std::size_t count, const TextOf& text, std::optional<std::size_t> row);

  std::function<void(std::optional<std::size_t> row)> selected;
  std::function<void(std::string_view column, bool ascending)> sorted;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void fill(const std::vector<QStringList>& rows);

  std::vector<Column> columns_;
  std::vector<QStringList> shown_;
  QString empty_text_;
};

}  // namespace brindle
