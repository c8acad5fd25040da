#include "window/date_parts_rows.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <array>
#include <exception>

#include "app/window_model.h"
#include "platform/file_name.h"
#include "text/date_format.h"
#include "text/date_pattern.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

struct PartEntry {
  const char* pattern;
  TextKey text;
};
constexpr std::array date_parts = {
    PartEntry{"None", "PARTNONE"},        PartEntry{"dd", "PARTDAYTWO"},      PartEntry{"d", "PARTDAY"},
    PartEntry{"EEE", "PARTWEEKDAYSHORT"}, PartEntry{"EEEE", "PARTWEEKDAY"},   PartEntry{"MM", "PARTMONTHTWO"},
    PartEntry{"M", "PARTMONTH"},          PartEntry{"MMM", "PARTMONTHSHORT"}, PartEntry{"MMMM", "PARTMONTHNAME"},
    PartEntry{"yyyy", "PARTYEAR"},        PartEntry{"yy", "PARTYEARTWO"},     PartEntry{"ww", "PARTWEEK"},
    PartEntry{"DDD", "PARTDAYOFYEAR"}};
constexpr std::array time_parts = {
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

std::u16string_view text_of(const RenameSettings& settings, SettingKey key) {
  const Text& text = settings.*std::get<Text RenameSettings::*>(find_setting(key)->member);
  return text ? std::u16string_view(*text) : std::u16string_view();
}

// The date of now as the picker would have it written; "" when that cannot be.
std::string written(const RenameSettings& settings, const std::vector<SettingKey>& keys, Date now, bool is_time) {
  const auto part = [&](std::size_t at) { return text_of(settings, keys[at]); };
  DateParts parts;
  if (is_time) {
    parts = {.timePart1 = part(0),
             .timeSeperator1 = part(1),
             .timePart2 = part(2),
             .timeSeperator2 = part(3),
             .timePart3 = part(4)};
  } else {
    parts = {part(0), part(1), part(2), part(3), part(4)};
  }
  try {
    return to_utf8(format_date(now, is_time ? time_pattern(parts) : date_pattern(parts)));
  } catch (const std::exception&) {
    return {};
  }
}

QWidget* picker(const PanelContext& context, const std::vector<SettingKey>& keys, bool is_time) {
  const std::span<const PartEntry> parts =
      is_time ? std::span<const PartEntry>(time_parts) : std::span<const PartEntry>(date_parts);
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
        qt_text(localized_format("WRITTENNOW", written(settings, keys, controller.model().now(), is_time)));
    for (QComboBox* box : boxes) box->setToolTip(text);
  });
  return widget;
}

}  // namespace

QWidget* date_picker(const PanelContext& context, const DatePartsKeys& keys) {
  return picker(context, keys.date(), false);
}

QWidget* time_picker(const PanelContext& context, const DatePartsKeys& keys) {
  return picker(context, keys.time(), true);
}

}  // namespace brindle
