#pragma once

// The values of an XMP packet (RDF in XML), by namespace and name. Texts are UTF-8. Time and memory grow with the size
// of the packet, whatever is in it; a packet that is no XML has no values.
//
// Immutable; any thread.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// A property: the URI that its namespace stands for, and its name there.
struct XmpName {
  std::string_view space;
  std::string_view name;
};

class XmpPacket {
 public:
  explicit XmpPacket(std::string_view packet);
  ~XmpPacket();

  /// A simple value; of several alternatives the default language's, else the first. "" when there is none.
  std::string text(XmpName property) const;

  /// The members of a list, in order; a simple value is a list of one.
  std::vector<std::string> list(XmpName property) const;

  /// A simple value inside a structure.
  std::string field(XmpName property, XmpName field) const;

 private:
  struct Document;
  std::unique_ptr<Document> document_;
};

}  // namespace brindle
