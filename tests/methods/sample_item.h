#pragma once

// Items for the tests of the rename methods; none of them exists on disk.

#include "case_table.h"
#include "list/file_system_item.h"
#include "methods/date_parts.h"
#include "methods/placement.h"

namespace brindle::test {

inline FileSystemItem sample_item(std::u16string_view name, std::string_view folder = "/Users/ann/Photos") {
  FileSystemItem item;
  std::string bytes;
  encode_path(name, bytes);
  item.set_path(folder, bytes);
  return item;
}

/// The item of a case: column "name", and perhaps "folder", "kind" ("folder" or "alias") and "newFilename".
inline FileSystemItem sample_item(const Case& c) {
  FileSystemItem item = sample_item(c["name"], c.has("folder") ? to_utf8(c["folder"]) : "/Users/ann/Photos");
  item.set_type(c["kind"] == u"folder" ? ItemType::folder : c["kind"] == u"alias" ? ItemType::alias : ItemType::file);
  item.setNewFilename(c["newFilename"]);
  return item;
}

/// A number as the settings hold most of them.
inline std::u16string typed(std::int32_t number) {
  return decimal_text(number);
}

/// What the steps of one run share, outside a plan.
struct StepRunner {
  WorkingName name;
  SequenceCounter counter;
  std::int32_t photo_number = 1;
  std::u16string error;

  /// Makes a name for the item by the step. True when there is no error.
  bool operator()(const RenameStep& step, FileSystemItem& item, const AudioAttributes* audio = nullptr,
                  const PhotoMetadata* photo = nullptr) {
    StepRun run{item, name, counter, photo_number, audio, photo};
    return run_step(step, run, error);
  }
};

/// Runs the step on the item of a case and compares with the columns "result" and "error" (a part of the error text;
/// none for success). An absent name is an empty result.
inline void expect_case(const Case& c, const RenameStep& step, const AudioAttributes* audio = nullptr,
                        const PhotoMetadata* photo = nullptr, std::int32_t* photo_number = nullptr) {
  FileSystemItem item = sample_item(c);
  StepRunner run;
  if (photo_number != nullptr) run.photo_number = *photo_number;
  const bool succeeded = run(step, item, audio, photo);
  if (photo_number != nullptr) *photo_number = run.photo_number;
  EXPECT_EQ(to_utf8(item.newFilename()), to_utf8(c["result"]));
  EXPECT_EQ(succeeded, !c.has("error")) << to_utf8(run.error);
  EXPECT_NE(run.error.find(c["error"]), std::u16string::npos) << to_utf8(run.error);
}

/// The columns that say where a text goes.
inline void fill_place(const Case& c, RenameSettings& settings, const PlacementMembers& place) {
  settings.*place.option = c.number("option", 0);
  settings.*place.position = typed(c.number("position", 1));
  settings.*place.direction = c.number("direction", 0);
  settings.*place.before_text = c["before"];
  settings.*place.before_occurrence = typed(c.number("occurrence", 1));
  settings.*place.after_text = c["after"];
  settings.*place.after_occurrence = typed(c.number("occurrence", 1));
}

/// The columns that say how a date and a time are written, over what the settings hold.
inline void fill_parts(const Case& c, RenameSettings& settings, const DatePartMembers& parts) {
  constexpr std::array columns = {"1", "s1", "2", "s2", "3"};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::string date = std::string("d") + columns[i];
    const std::string time = std::string("t") + columns[i];
    if (c.has(date)) settings.*parts.date[i] = c[date];
    if (c.has(time)) settings.*parts.time[i] = c[time];
  }
}

/// No parts at all, for tables that name every one.
inline void clear_parts(RenameSettings& settings, const DatePartMembers& parts) {
  for (std::size_t i = 0; i < parts.date.size(); ++i) {
    settings.*parts.date[i] = settings.*parts.time[i] = i % 2 == 0 ? u"None" : u"";
  }
}

}  // namespace brindle::test
