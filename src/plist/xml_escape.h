#pragma once

// Texts that XML cannot hold, in a form that it can.
//
// XML has no way to write most control characters, U+FFFE, U+FFFF and halves of surrogate pairs. Each of them stands as
// the private character U+EF7F with the number of the UTF-16 unit behind it, in four hexadecimal digits ("U+EF7F"
// "001B" for escape). U+EF7F itself stands so as well, and thus every text comes back exactly. Other programs show the
// private character and the digits. Pure; any thread.

#include <string>
#include <string_view>

namespace brindle {

/// Appends a text as the content of an element, or of an attribute between double quotes (UTF-8).
void append_xml_text(std::u16string_view text, std::string& xml);
void append_xml_attribute_text(std::u16string_view text, std::string& xml);

/// Takes back what stands for a character that XML cannot hold; the markup has been taken back before.
std::u16string restore_xml_text(std::u16string text);

}  // namespace brindle
