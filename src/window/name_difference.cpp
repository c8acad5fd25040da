#include "window/name_difference.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace brindle {
namespace {

bool splits(QTextBoundaryFinder& finder, qsizetype place) {
  finder.setPosition(place);
  return !finder.isAtBoundary();
}

}  // namespace

ChangedPart changed_part(const QString& old_name, const QString& new_name) {
  QTextBoundaryFinder old_characters(QTextBoundaryFinder::Grapheme, old_name);
  QTextBoundaryFinder new_characters(QTextBoundaryFinder::Grapheme, new_name);
  const qsizetype shorter = std::min(old_name.size(), new_name.size());
  qsizetype start = 0;
  while (start < shorter && old_name[start] == new_name[start]) ++start;
  while (start > 0 && (splits(old_characters, start) || splits(new_characters, start))) --start;
  qsizetype same_end = 0;
  while (same_end < shorter - start &&
         old_name[old_name.size() - 1 - same_end] == new_name[new_name.size() - 1 - same_end])
    ++same_end;
  while (same_end > 0 &&
         (splits(old_characters, old_name.size() - same_end) || splits(new_characters, new_name.size() - same_end)))
    --same_end;
  return {start, new_name.size() - same_end};
}

}  // namespace brindle
