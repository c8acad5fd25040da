#pragma once

// Pickers of the parts of a date and of a time with the separators between them, and what they write now.

#include "window/form_rows.h"

namespace brindle {

/// The ten keys of a method's date.
struct DatePartsKeys {
  SettingKey datePart1, dateSeperator1, datePart2, dateSeperator2, datePart3;
  SettingKey timePart1, timeSeperator1, timePart2, timeSeperator2, timePart3;

  std::vector<SettingKey> date() const { return {datePart1, dateSeperator1, datePart2, dateSeperator2, datePart3}; }
  std::vector<SettingKey> time() const { return {timePart1, timeSeperator1, timePart2, timeSeperator2, timePart3}; }
};

inline constexpr DatePartsKeys prefix_suffix_date_keys = {"prefixSuffixDatePart1",      "prefixSuffixDateSeperator1",
                                                          "prefixSuffixDatePart2",      "prefixSuffixDateSeperator2",
                                                          "prefixSuffixDatePart3",      "prefixSuffixTimePart1",
                                                          "prefixSuffixTimeSeperator1", "prefixSuffixTimePart2",
                                                          "prefixSuffixTimeSeperator2", "prefixSuffixTimePart3"};
inline constexpr DatePartsKeys date_time_date_keys = {"dateTimeFormatDatePart1",      "dateTimeFormatDateSeperator1",
                                                      "dateTimeFormatDatePart2",      "dateTimeFormatDateSeperator2",
                                                      "dateTimeFormatDatePart3",      "dateTimeFormatTimePart1",
                                                      "dateTimeFormatTimeSeperator1", "dateTimeFormatTimePart2",
                                                      "dateTimeFormatTimeSeperator2", "dateTimeFormatTimePart3"};
inline constexpr DatePartsKeys photo_date_keys = {
    "photoDatePart1", "photoDateSeperator1", "photoDatePart2", "photoDateSeperator2", "photoDatePart3",
    "photoTimePart1", "photoTimeSeperator1", "photoTimePart2", "photoTimeSeperator2", "photoTimePart3"};

/// Three pickers and two separators. Each tooltip shows the date of now as it would be written.
QWidget* date_picker(const PanelContext& context, const DatePartsKeys& keys);
QWidget* time_picker(const PanelContext& context, const DatePartsKeys& keys);

}  // namespace brindle
