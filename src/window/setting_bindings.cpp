#include "window/setting_bindings.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cstdlib>
#include <utility>

#include "text/number_text.h"
#include "window/text.h"

namespace brindle {
namespace {

const SettingRow& row_of(std::string_view key) {
  const SettingRow* row = find_setting(key);
  if (row == nullptr) qFatal("no setting is called %s", std::string(key).c_str());
  return *row;
}

template <class Member>
Member member_of(const SettingRow& row) {
  const auto* member = std::get_if<Member>(&row.member);
  if (member == nullptr) qFatal("the setting %s is of another kind than its field", std::string(row.key).c_str());
  return *member;
}

using TextMember = Text RenameSettings::*;
using FlagMember = bool RenameSettings::*;
using NumberMember = std::int32_t RenameSettings::*;
using DateMember = Date RenameSettings::*;

QString shown(const Text& text) {
  return text ? qt_text(std::u16string_view(*text)) : QString();
}

}  // namespace

SettingBindings::SettingBindings(SettingsStore& store, QObject* parent) : QObject(parent), store_(store) {
  observer_ = store_.add_observer([this](const SettingsChange& change) { show(change); });
}

SettingBindings::~SettingBindings() {
  store_.remove_observer(observer_);
}

void SettingBindings::add(const SettingRow& row, QWidget* field, std::function<void(const RenameSettings&)> show) {
  show(store_.settings());
  bindings_.push_back({setting_index(row), field, std::move(show)});
}

void SettingBindings::show(const SettingsChange& change) {
  for (const Binding& binding : bindings_) {
    if (change.keys[binding.row]) binding.show(store_.settings());
  }
  for (const Follower& follower : followers_) {
    if ((change.keys & follower.keys).any()) follower.follow(store_.settings());
  }
}

void SettingBindings::bind(QLineEdit* field, std::string_view key) {
  const SettingRow& row = row_of(key);
  const auto member = member_of<TextMember>(row);
  connect(field, &QLineEdit::textEdited, this, [this, member](const QString& text) {
    store_.commit([&](RenameSettings& settings) { settings.*member = utf16(text); });
  });
  add(row, field, [field, member](const RenameSettings& settings) {
    // Setting the text that is there would move the cursor away from where somebody types.
    if (field->text() != shown(settings.*member)) field->setText(shown(settings.*member));
  });
}

void SettingBindings::bind_number(QSpinBox* field, std::string_view key) {
  const SettingRow& row = row_of(key);
  if (const auto* number = std::get_if<NumberMember>(&row.member)) {
    connect(field, &QSpinBox::valueChanged, this, [this, member = *number](int value) {
      store_.commit([&](RenameSettings& settings) { settings.*member = value; });
    });
    add(row, field, [field, member = *number](const RenameSettings& settings) {
      const QSignalBlocker silence(field);
      field->setValue(settings.*member);
    });
    return;
  }
  const auto member = member_of<TextMember>(row);
  connect(field, &QSpinBox::valueChanged, this, [this, member](int value) {
    store_.commit([&](RenameSettings& settings) { settings.*member = QString::number(value).toStdU16String(); });
  });
  add(row, field, [field, member](const RenameSettings& settings) {
    const QSignalBlocker silence(field);
    field->setValue(settings.*member ? integer_value(*(settings.*member)) : field->minimum());
  });
}

void SettingBindings::bind(QAbstractButton* check_box, std::string_view key) {
  const SettingRow& row = row_of(key);
  const auto member = member_of<FlagMember>(row);
  connect(check_box, &QAbstractButton::toggled, this, [this, member](bool checked) {
    store_.commit([&](RenameSettings& settings) { settings.*member = checked; });
  });
  add(row, check_box, [check_box, member](const RenameSettings& settings) {
    const QSignalBlocker silence(check_box);
    check_box->setChecked(settings.*member);
  });
}

void SettingBindings::bind(QComboBox* box, std::string_view key) {
  const SettingRow& row = row_of(key);
  if (const auto* number = std::get_if<NumberMember>(&row.member)) {
    const bool has_data = box->itemData(0).isValid();
    connect(box, &QComboBox::activated, this, [=, this, member = *number](int index) {
      store_.commit(
          [&](RenameSettings& settings) { settings.*member = has_data ? box->itemData(index).toInt() : index; });
    });
    add(row, box, [box, has_data, member = *number](const RenameSettings& settings) {
      const QSignalBlocker silence(box);
      box->setCurrentIndex(has_data ? box->findData(settings.*member) : settings.*member);
    });
    return;
  }
  const auto member = member_of<TextMember>(row);
  connect(box, &QComboBox::activated, this, [this, box, member](int index) {
    store_.commit([&](RenameSettings& settings) { settings.*member = utf16(box->itemData(index).toString()); });
  });
  add(row, box, [box, member](const RenameSettings& settings) {
    const QSignalBlocker silence(box);
    const QString text = shown(settings.*member);
    int index = box->findData(text);
    // A profile may hold what the box does not offer; it is shown as it is.
    if (index < 0) {
      box->addItem(in_one_line(text), text);
      index = box->count() - 1;
    }
    box->setCurrentIndex(index);
  });
}

void SettingBindings::bind(QDateTimeEdit* field, std::string_view key) {
  const SettingRow& row = row_of(key);
  const auto member = member_of<DateMember>(row);
  connect(field, &QDateTimeEdit::dateTimeChanged, this, [this, member](const QDateTime& date) {
    const Date chosen{std::chrono::milliseconds(date.toMSecsSinceEpoch())};
    store_.commit([&](RenameSettings& settings) { settings.*member = chosen; });
  });
  add(row, field, [field, member](const RenameSettings& settings) {
    const QSignalBlocker silence(field);
    field->setDateTime(QDateTime::fromMSecsSinceEpoch((settings.*member).time_since_epoch().count()));
  });
}

void SettingBindings::bind(QButtonGroup* group, std::string_view key, std::function<void(int)> chosen) {
  const SettingRow& row = row_of(key);
  connect(group, &QButtonGroup::idClicked, this, std::move(chosen));
  const auto show_id = [group](int id) {
    QAbstractButton* button = group->button(id);
    if (button != nullptr) button->setChecked(true);
  };
  QWidget* first = group->buttons().value(0);
  if (const auto* flag = std::get_if<FlagMember>(&row.member)) {
    add(row, first, [=, member = *flag](const RenameSettings& settings) { show_id(settings.*member ? 1 : 0); });
    return;
  }
  const auto member = member_of<NumberMember>(row);
  add(row, first, [=](const RenameSettings& settings) { show_id(settings.*member); });
}

void SettingBindings::follow(const std::vector<std::string_view>& keys,
                             std::function<void(const RenameSettings&)> follow) {
  Follower follower{{}, std::move(follow)};
  for (const std::string_view key : keys) follower.keys.set(setting_index(row_of(key)));
  follower.follow(store_.settings());
  followers_.push_back(std::move(follower));
}

QWidget* SettingBindings::field_of(std::string_view key) const {
  const SettingRow* row = find_setting(key);
  for (const Binding& binding : bindings_) {
    if (row != nullptr && binding.row == setting_index(*row)) return binding.field;
  }
  return nullptr;
}

}  // namespace brindle
