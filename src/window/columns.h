#pragma once

// The columns of the file table, in their first order.

#include <array>
#include <cstddef>
#include <string_view>

namespace brindle {

struct Column {
  std::string_view identifier;  ///< as in FileSystemItem::displayField; what the list is sorted by
  std::string_view title;       ///< key of the string table
  int characters;               ///< the width it begins with
  bool is_shown;                ///< until somebody chooses otherwise
  bool is_photo;                ///< read from the file, when it is seen
};

inline constexpr std::array<Column, 12> columns = {{
    {"icon", "COLUMNICON", 4, true, false},
    {"filenameWithExtension", "COLUMNFILENAMEWITHEXTENSION", 36, true, false},
    {"newFilename", "COLUMNNEWFILENAME", 36, true, false},
    {"fileLocation", "COLUMNFILELOCATION", 22, true, false},
    {"filename", "COLUMNFILENAME", 28, false, false},
    {"fileExtension", "COLUMNFILEEXTENSION", 10, false, false},
    {"fileWithPath", "COLUMNFILEWITHPATH", 50, false, false},
    {"fileType", "COLUMNFILETYPE", 10, false, false},
    {"make", "COLUMNMAKE", 16, false, true},
    {"model", "COLUMNMODEL", 18, false, true},
    {"dimensions", "COLUMNDIMENSIONS", 14, false, true},
    {"pictureTaken", "COLUMNPICTURETAKEN", 24, false, true},
}};

inline constexpr int icon_column = 0;
inline constexpr int name_column = 1;
inline constexpr int new_name_column = 2;

}  // namespace brindle
