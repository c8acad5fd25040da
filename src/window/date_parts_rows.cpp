#include "window/date_parts_rows.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <array>
#include <exception>

#include "app/window_model.h"
#include "methods/date_parts.h"
#include "platform/file_name.h"
#include "text/date_format.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

struct PartEntry {
  const char* pattern;
  TextKey text;
};
constexpr std::array entries_of_dates = {
    PartEntry{"None", "PARTNONE"},        PartEntry{"dd", "PARTDAYTWO"},      PartEntry{"d", "PARTDAY"},
    PartEntry{"EEE", "PARTWEEKDAYSHORT"}, PartEntry{"EEEE", "PARTWEEKDAY"},   PartEntry{"MM", "PARTMONTHTWO"},
    PartEntry{"M", "PARTMONTH"},          PartEntry{"MMM", "PARTMONTHSHORT"}, PartEntry{"MMMM", "PARTMONTHNAME"},
    PartEntry{"yyyy", "PARTYEAR"},        PartEntry{"yy", "PARTYEARTWO"},     PartEntry{"ww", "PARTWEEK"},
    PartEntry{"DDD", "PARTDAYOFYEAR"}};
constexpr std::array entries_of_times = {
    PartEntry{"None", "PARTNONE"},       PartEntry{"HH", "PARTHOURTWO"},   PartEntry{"H", "PARTHOUR"},
    PartEntry{"hh", "PARTHOURHALFTWO"},  PartEntry{"h", "PARTHOURHALF"},   PartEntry{"mm", "PARTMINUTETWO"},
    PartEntry{"m", "PARTMINUTE"},        PartEntry{"ss", "PARTSECONDTWO"}, PartEntry{"s", "PARTSECOND"},
    PartEntry{"SSS", "PARTMILLISECOND"}, PartEntry{"a", "PARTDAYHALF"}};

constexpr int letters_of_part = 5;

QComboBox* part_box(const PanelContext& context, SettingKey key, TextKey name, std::span<const PartEntry> parts) {
  std::vector<Entry> entries;
  for (const PartEntry& part : parts) entries.push_back({part.text, QString::fromLatin1(part.pattern)});
  QComboBox* box = choice_box(context, key, name, entries);
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(letters_of_part);
  box->setMaxVisibleItems(static_cast<int>(parts.size()));
  return box;
}

QLineEdit* separator_field(const PanelContext& context, SettingKey key) {
  QLineEdit* field = text_field(context, key, "PARTSEPARATOR", 0);
  field->setClearButtonEnabled(false);
  field->setAlignment(Qt::AlignHCenter);
  field->setToolTip(localized_text("PARTSEPARATORTIP"));
  field->setFixedWidth(field->fontMetrics().averageCharWidth() * 3 + field->fontMetrics().height() * 2 / 3);
  return field;
}

// The date of now as the picker would have it written; "" when that cannot be.
std::string written(const RenameSettings& settings, const DatePartMembers& members, Date now, bool is_time) {
  const DateParts parts = date_parts(settings, members);
  try {
    return to_utf8(format_date(now, is_time ? time_pattern(parts) : date_pattern(parts)));
  } catch (const std::exception&) {
    return {};
  }
}

QWidget* picker(const PanelContext& context, const DatePartMembers& members, bool is_time) {
  std::vector<SettingKey> keys;
  for (const auto member : is_time ? members.time : members.date) keys.push_back(key_of(member));
  const std::span<const PartEntry> parts =
      is_time ? std::span<const PartEntry>(entries_of_times) : std::span<const PartEntry>(entries_of_dates);
  const TextKey name = is_time ? "TIMEPART" : "DATEPART";
  auto* widget = new QWidget;
  auto* layout = new QHBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(widget->fontMetrics().height() / 5);
  std::vector<QComboBox*> boxes;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i % 2 != 0) {
      layout->addWidget(separator_field(context, keys[i]));
      continue;
    }
    boxes.push_back(part_box(context, keys[i], name, parts));
    layout->addWidget(boxes.back(), 1);
  }
  context.bindings.follow(keys, [=, &controller = context.controller](const RenameSettings& settings) {
    const QString text =
        qt_text(localized_format("WRITTENNOW", written(settings, members, controller.model().now(), is_time)));
    for (QComboBox* box : boxes) box->setToolTip(text);
  });
  return widget;
}

}  // namespace

QWidget* date_picker(const PanelContext& context, const DatePartMembers& members) {
  return picker(context, members, false);
}

QWidget* time_picker(const PanelContext& context, const DatePartMembers& members) {
  return picker(context, members, true);
}

}  // namespace brindle
