#pragma once

// What of a new name is new.

#include <QString>

namespace brindle {

/// UTF-16 units [start, end) of the new name; empty when nothing was added.
struct ChangedPart {
  qsizetype start = 0;
  qsizetype end = 0;
};

/// What lies between the beginning and the end that both names have in common, in whole characters as people see them.
/// Linear in the names' lengths.
ChangedPart changed_part(const QString& old_name, const QString& new_name);

}  // namespace brindle
