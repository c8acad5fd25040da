#pragma once

// Ties the fields of the window to the keys of the settings record: what is typed goes into the store at once, and what
// changes in the store is shown. A field is made, given its key, and needs nothing more.

#include <QObject>
#include <functional>
#include <string_view>
#include <vector>

#include "settings/settings_store.h"

class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QDateTimeEdit;
class QLineEdit;
class QSpinBox;
class QWidget;

namespace brindle {

/// Owned by the window; its fields live as long. A key that the record does not have, or of another kind than the
/// field, is a mistake in the program and ends it at once.
class SettingBindings final : public QObject {
 public:
  SettingBindings(SettingsStore& store, QObject* parent);
  ~SettingBindings() override;

  void bind(QLineEdit* field, std::string_view key);
  /// A whole number that the record keeps as text or as a number.
  void bind_number(QSpinBox* field, std::string_view key);
  void bind(QAbstractButton* check_box, std::string_view key);
  /// The chosen entry's own data: a text (QString), or a number; where entries of a number key have no data, its index.
  void bind(QComboBox* box, std::string_view key);
  void bind(QDateTimeEdit* field, std::string_view key);
  /// Shows a number or a flag as the button of that id; choosing one is the handler's business.
  void bind(QButtonGroup* group, std::string_view key, std::function<void(int)> chosen);

  /// Calls `follow` now, and again whenever one of the keys changes: for fields that are on only when others are.
  void follow(const std::vector<std::string_view>& keys, std::function<void(const RenameSettings&)> follow);

  /// The field that shows a key; null when none does.
  QWidget* field_of(std::string_view key) const;

 private:
  struct Binding {
    std::size_t row;
    QWidget* field;
    std::function<void(const RenameSettings&)> show;
  };
  struct Follower {
    SettingSet keys;
    std::function<void(const RenameSettings&)> follow;
  };

  void add(const SettingRow& row, QWidget* field, std::function<void(const RenameSettings&)> show);
  void show(const SettingsChange& change);

  SettingsStore& store_;
  std::uint32_t observer_ = 0;
  std::vector<Binding> bindings_;
  std::vector<Follower> followers_;
};

}  // namespace brindle
