#pragma once

// The contract that every rename operation keeps, in one place.
//
// An operation works on the base of the working name: of "newFilename" when an earlier rule of a chain (or a list) has
// put a name there, else of the name on disk. The result is stored in "newFilename" with the extension put back.
// Whatever goes wrong while the name is being built ends up in `error`; the field then keeps what it held.

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "list/file_system_item.h"

namespace brindle {

/// The working name of an item and the buffers for the next one. One object serves a whole run of one thread.
struct WorkingName {
  std::u16string_view base;       ///< views into the item
  std::u16string_view extension;  ///< without the dot; empty for none
  std::u16string result;          ///< the new base, and in the end the whole name
  std::u16string scratch;         ///< for the text function's own use; holds anything on entry
};

/// What a text function made of the base.
enum class NameOutcome {
  base,    ///< `result` holds the new base; the extension is to be put back
  whole,   ///< `result` holds the whole name, extension included
  absent,  ///< no name at all: the field becomes empty, and no error is reported
};

/// Takes the working name of `item` apart.
void take_apart(const FileSystemItem& item, WorkingName& name);

/// Puts `result` and the extension together and stores them as the item's new name.
void store(FileSystemItem& item, WorkingName& name, NameOutcome outcome);

/// The localised text of "UNABLETOGENERATENEWFILENAMEERROR", with "%@" where the reason goes; English until it is set.
/// To be set while no operation runs.
void set_failure_format(std::u16string_view format);

/// Fills `error` with the localised "UNABLETOGENERATENEWFILENAMEERROR" and the reason.
void report_failure(std::u16string& error, const char* reason);

/// Runs `transform(name)`, which reads name.base and name.extension, writes name.result (empty on entry) and returns a
/// NameOutcome. True exactly when `error` is empty at the end; it is never cleared here.
template <class Transform>
bool rename_operation(FileSystemItem& item, WorkingName& name, std::u16string& error, Transform&& transform) {
  try {
    take_apart(item, name);
    name.result.clear();
    store(item, name, std::forward<Transform>(transform)(name));
  } catch (const std::exception& failure) {
    report_failure(error, failure.what());
  }
  return error.empty();
}

}  // namespace brindle
