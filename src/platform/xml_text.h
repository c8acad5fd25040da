#pragma once

// On-disk bytes as XML text and back. Pure; any thread.

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// Appends a name or path as the value of an XML 1.0 attribute (UTF-8, to stand between double quotes): the text of
/// platform/file_name.h, with line ends and tabs as character references. False when it holds a character that XML
/// cannot (control characters, U+FFFE, U+FFFF), for which U+FFFD stands.
bool append_xml_attribute(std::string_view bytes, std::string& xml);

/// The most bytes that append_xml_attribute appends for these; exact for ASCII.
std::size_t most_attribute_bytes(std::string_view bytes);
/// Whether append_xml_attribute answers true, told at a glance: true only where it does.
bool is_surely_representable(std::string_view bytes);

/// The bytes of a name or path that was read from XML as UTF-8, in place: the way back of append_xml_attribute.
void restore_bytes(std::string& text);

}  // namespace brindle
