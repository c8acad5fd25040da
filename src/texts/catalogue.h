#pragma once

// The texts of one language, as gettext's msgfmt compiles them from po/LANGUAGE.po (the format .mo, little-endian). The
// build makes the catalogues part of the program. Constant; any thread.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace brindle {

class Catalogue {
 public:
  /// Without a text.
  Catalogue() = default;
  /// `mo` is what msgfmt has written, and outlives the catalogue.
  explicit Catalogue(std::string_view mo) : mo_(mo) {}

  std::size_t size() const;
  /// All forms of the text for an English one (of two forms: for the one of 1) with NUL between them; none where there
  /// is no text. `context` is the key of texts that have one.
  std::optional<std::string_view> find(std::string_view context, std::string_view english) const;
  /// The form of find()'s texts for a number; without a number, that of most numbers.
  std::string_view form(std::string_view forms, std::optional<std::uint64_t> number) const;

  /// Of an entry, by its place in the sorted file: "context\4english\0english for other numbers", and its texts.
  std::string_view original(std::size_t place) const { return text_at(12, place); }
  std::string_view translation(std::size_t place) const { return text_at(16, place); }

  /// A field of the header, which is the first text (that of the original ""): "Language", say. Empty when missing.
  std::string_view header(std::string_view field) const;

 private:
  std::uint32_t number_at(std::size_t offset) const;
  std::string_view text_at(std::size_t table_field, std::size_t place) const;

  std::string_view mo_;
};

/// What msgfmt has made of each po/*.po, in the order of the codes of their languages.
std::span<const std::string_view> compiled_catalogues();

}  // namespace brindle
