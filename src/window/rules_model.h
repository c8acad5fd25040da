#pragma once

// The chain as rows of a table: on or off, method, variant. A view of RulesController.

#include <QAbstractTableModel>

#include "app/window_model.h"

namespace brindle {

class BrindleAppController;
class RulesController;
struct Rule;

class RulesModel final : public QAbstractTableModel {
 public:
  enum Column { active, method, variant, column_count };

  RulesModel(BrindleAppController& controller, QObject* parent);
  ~RulesModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

 private:
  void refresh();

  WindowModel& model_;
  RulesController& rules_;
  std::uint32_t observer_ = 0;
  int rows_ = 0;
};

/// What the window calls the method of a rule.
QString method_name(const Rule& rule);
/// The settings of a rule as lines to read, in the toolkit's markup.
QString rule_summary(const Rule& rule);

}  // namespace brindle
