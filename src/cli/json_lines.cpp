#include "cli/json_lines.h"

#include <fmt/format.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>

#include "platform/byte_text.h"

namespace brindle {
namespace {

bool is_simple(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
}

void append_escaped(char c, std::string& out) {
  switch (c) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\t':
      out += "\\t";
      return;
    case '\r':
      out += "\\r";
      return;
    default:
      break;
  }
  if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
    fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned>(c));
  } else {
    out += c;
  }
}

// False when some bytes were not UTF-8.
bool append_text(std::string_view text, std::string& out) {
  if (is_simple(text)) {
    out += text;
    return true;
  }
  bool valid = true;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto size = static_cast<std::int32_t>(text.size());
  for (std::int32_t at = 0; at < size;) {
    const std::int32_t start = at;
    UChar32 c = 0;
    U8_NEXT(bytes, at, size, c);
    if (c < 0) {
      valid = false;
      out += "\xEF\xBF\xBD";
    } else if (c < 0x80) {
      append_escaped(static_cast<char>(c), out);
    } else {
      out += text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
    }
  }
  return valid;
}

}  // namespace

JsonLine::JsonLine(std::string& buffer) : buffer_(buffer) {
  buffer_ += '{';
}

JsonLine::JsonLine(std::string& buffer, std::string_view type) : JsonLine(buffer) {
  text("type", type);
}

JsonLine::~JsonLine() {
  buffer_ += "}\n";
}

void JsonLine::begin(std::string_view key) {
  buffer_ += first_ ? "\"" : ",\"";
  buffer_ += key;
  buffer_ += "\":";
  first_ = false;
}

JsonLine& JsonLine::raw(std::string_view key, std::string_view value) {
  begin(key);
  buffer_ += value;
  return *this;
}

JsonLine& JsonLine::text(std::string_view key, std::string_view value) {
  begin(key);
  buffer_ += '"';
  append_text(value, buffer_);
  buffer_ += '"';
  return *this;
}

JsonLine& JsonLine::bytes(std::string_view key, std::string_view value) {
  begin(key);
  buffer_ += '"';
  const bool valid = append_text(value, buffer_);
  buffer_ += '"';
  if (valid) return *this;
  begin(std::string(key) + "Bytes");
  buffer_ += '"';
  append_base64(value, buffer_);
  buffer_ += '"';
  return *this;
}

JsonLine& JsonLine::pairs(std::string_view key, std::string_view first, std::string_view second,
                          std::span<const JsonPair> members) {
  begin(key);
  const auto add = [&](std::string_view name, std::string_view value) {
    buffer_.append("\"").append(name).append("\":\"");
    append_text(value, buffer_);
    buffer_ += '"';
  };
  buffer_ += '[';
  for (const JsonPair& pair : members) {
    buffer_ += buffer_.back() == '[' ? "{" : ",{";
    add(first, pair.first);
    buffer_ += ',';
    add(second, pair.second);
    buffer_ += '}';
  }
  buffer_ += ']';
  return *this;
}

JsonLine& JsonLine::seconds(std::string_view key, double value) {
  return raw(key, fmt::format("{:.3f}", value));
}

}  // namespace brindle
