#pragma once

// From the elements of a log to its entries. One thread.

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "log/rename_log.h"

namespace brindle {

/// Appends an entry to a log for each element it is given. Keeps each folder once, as long as entries of the same
/// folder follow one another.
class LogEntryReader {
 public:
  explicit LogEntryReader(LogFile& log) : log_(log) {}

  void add(const pugi::xml_node& element);

 private:
  struct Side {
    std::string location;     // as it stands in the log
    std::string_view folder;  // its bytes, kept; empty when it is none
    std::string name;
  };

  std::string_view read_side(const char* location, const char* name, const char* exact, Side& side);
  std::string_view read_exact(const char* location, const char* exact, Side& side);
  std::string_view use_folder(std::string bytes, Side& side);
  std::string_view use_location(std::string_view location, Side& side);

  LogFile& log_;
  Side source_;
  Side target_;
};

}  // namespace brindle
