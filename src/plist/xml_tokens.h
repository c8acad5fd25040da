#pragma once

// XML 1.0 as a stream of tags and texts, for documents that need no document type: the five entities that XML itself
// has, no others. Everything that is no well-formed XML is refused, with two exceptions: control characters, and
// references to them, which other programs write.
//
// An object belongs to one thread at a time.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/status.h"

namespace brindle {

/// The text of a document in UTF-8 or UTF-16 (told by its byte order mark or its first character) or in ISO 8859-1
/// (when its declaration says so). The reason is a clause.
Result<std::u16string> decode_xml(std::string_view bytes);

class XmlTokens {
 public:
  enum class Token : unsigned char {
    start,  ///< name() and attribute() are those of the element; one that closes itself gives an end as well
    end,    ///< name()
    text,   ///< text(), a piece of the text between two tags: not empty
    finished,
    fault,  ///< error()
  };

  /// The document must outlive the object.
  explicit XmlTokens(std::u16string_view document) : document_(document) {}

  Token next();

  std::u16string_view name() const { return name_; }
  const std::u16string& text() const { return text_; }
  /// The value of an attribute of the last start; "" when it has none.
  std::u16string_view attribute(std::u16string_view name) const;
  /// A clause such as "line 3: …".
  const std::string& error() const { return error_; }

  /// Makes a fault of the reader's own at the present place.
  Token fail(std::string_view reason);

 private:
  struct Attribute {
    std::u16string_view name;
    std::u16string value;
  };

  bool at(std::u16string_view text) const { return document_.substr(at_).starts_with(text); }
  bool skip_past(std::u16string_view end);
  void skip_blanks();
  std::u16string_view take_name();
  Token take_markup();
  Token skip_markup(std::u16string_view end);
  Token skip_document_type();
  Token take_character_data();
  Token take_text();
  Token take_start();
  Token take_end();
  bool take_attribute();
  bool take_quoted(std::u16string_view& value);
  Token close();
  bool append_text(std::u16string_view raw, std::u16string& text);
  bool append_reference(std::u16string_view reference, std::u16string& text);

  std::u16string_view document_;
  std::size_t at_ = 0;
  std::vector<std::u16string_view> open_;  // the names of the elements around the present place
  bool has_root_ = false;
  bool closes_itself_ = false;
  bool skipped_ = false;
  std::u16string_view name_;
  std::vector<Attribute> attributes_;
  std::u16string text_;
  std::string error_;
};

}  // namespace brindle
