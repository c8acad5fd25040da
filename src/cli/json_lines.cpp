#include "cli/json_lines.h"

#include <fmt/format.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>

#include "platform/byte_text.h"
#include "platform/file_name.h"
#include "texts/remark_text.h"

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

JsonLine& JsonLine::names(std::string_view key, JsonPair keys, JsonPair values) {
  begin(key);
  buffer_ += '{';
  first_ = true;
  bytes(keys.first, values.first).bytes(keys.second, values.second);
  buffer_ += '}';
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

void print_summary(std::string& buffer, const RunSummary& summary) {
  JsonLine line(buffer, "summary");
  line.text("command", summary.command)
      .number("items", summary.counts.items)
      .number("renameable", summary.counts.renameable)
      .number("renamed", summary.counts.renamed);
  if (summary.log.empty()) {
    line.null("log");
  } else {
    line.bytes("log", summary.log);
  }
  line.seconds("seconds", summary.seconds);
}

void print_left_out(std::string& buffer, std::string_view path, std::string_view reason) {
  JsonLine(buffer, "leftOut").bytes("path", path).text("reason", reason);
}

void print_unreadable(std::string& buffer, std::string_view path, std::string_view reason) {
  JsonLine(buffer, "unreadable").bytes("path", path).text("reason", reason);
}

void print_refusal(std::string& buffer, const Refusal& refusal, std::string_view text) {
  JsonLine(buffer, "refusal").text("title", refusal.title).text("message", refusal.message).text("text", text);
}

void ItemPrinter::print(std::size_t row, std::string_view old_path) {
  const ItemRecord& record = files_[row];
  if (record.folder != folder_) {
    folder_ = record.folder;
    path_ = files_.folders().path(folder_);
    if (path_.back() != '/') path_ += '/';
    folder_size_ = path_.size();
  }
  path_.resize(folder_size_);
  path_ += record.name();
  JsonLine line(buffer_, "item");
  line.bytes("path", path_);
  if (!old_path.empty()) line.bytes("oldPath", old_path);
  if (record.status == ItemStatus::proposed) {
    line.bytes("newFilename", record.proposed());
  } else {
    line.text("newFilename", to_utf8(status_text(record.status)));
  }
  if (const std::string_view wanted = files_.wanted(row); !wanted.empty()) line.bytes("wanted", wanted);
  line.flag("renamed", record.status == ItemStatus::renaming_ok);
  if (record.reason != 0) line.text("reason", files_.reason(row));
  if (record.problem != Problem::none) line.text("problem", word_of(record.problem));
  if (const std::string with = problem_with(files_, row); !with.empty()) line.bytes("problemWith", with);
  if (record.warning != Warning::none) line.text("warning", word_of(record.warning));
}

}  // namespace brindle
