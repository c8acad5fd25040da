#include "metadata/iptc_dictionary.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "metadata/xmp_packet.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

constexpr std::string_view dc = "http://purl.org/dc/elements/1.1/";
constexpr std::string_view photoshop = "http://ns.adobe.com/photoshop/1.0/";
constexpr std::string_view rights = "http://ns.adobe.com/xap/1.0/rights/";
constexpr std::string_view iptc_core = "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/";

constexpr std::uint8_t no_number = 0;  // in truth the version of the record

/// Where one value stands: in which data sets of the application record, and in which property of XMP (empty for none).
struct Source {
  std::u16string_view key;
  std::uint8_t number;
  XmpName property;
  bool repeats = false;
};

constexpr Source sources[] = {
    {u"ObjectName", 5, {dc, "title"}},
    {u"ObjectAttributeReference", 4, {iptc_core, "IntellectualGenre"}, true},
    {u"Urgency", 10, {photoshop, "Urgency"}},
    {u"SubjectReference", 12, {iptc_core, "SubjectCode"}, true},
    {u"Category", 15, {photoshop, "Category"}},
    {u"SupplementalCategory", 20, {photoshop, "SupplementalCategories"}, true},
    {u"Keywords", 25, {dc, "subject"}, true},
    {u"SpecialInstructions", 40, {photoshop, "Instructions"}},
    {u"DateCreated", 55, {}},
    {u"TimeCreated", 60, {}},
    {u"Byline", 80, {dc, "creator"}, true},
    {u"BylineTitle", 85, {photoshop, "AuthorsPosition"}, true},
    {u"City", 90, {photoshop, "City"}},
    {u"SubLocation", 92, {iptc_core, "Location"}},
    {u"Province/State", 95, {photoshop, "State"}},
    {u"Country/PrimaryLocationCode", 100, {iptc_core, "CountryCode"}},
    {u"Country/PrimaryLocationName", 101, {photoshop, "Country"}},
    {u"OriginalTransmissionReference", 103, {photoshop, "TransmissionReference"}},
    {u"Headline", 105, {photoshop, "Headline"}},
    {u"Credit", 110, {photoshop, "Credit"}},
    {u"Source", 115, {photoshop, "Source"}},
    {u"CopyrightNotice", 116, {dc, "rights"}},
    {u"Caption/Abstract", 120, {dc, "description"}},
    {u"Writer/Editor", 122, {photoshop, "CaptionWriter"}, true},
    {u"UsageTerms", no_number, {rights, "UsageTerms"}},
    {u"Scene", no_number, {iptc_core, "Scene"}, true},
};

constexpr std::pair<std::u16string_view, std::string_view> contact_fields[] = {
    {u"CiAdrExtadr", "CiAdrExtadr"}, {u"CiAdrCity", "CiAdrCity"}, {u"CiAdrRegion", "CiAdrRegion"},
    {u"CiAdrPcode", "CiAdrPcode"},   {u"CiAdrCtry", "CiAdrCtry"}, {u"CiTelWork", "CiTelWork"},
    {u"CiEmailWork", "CiEmailWork"}, {u"CiUrlWork", "CiUrlWork"},
};

constexpr std::uint8_t envelope_record = 1;
constexpr std::uint8_t application_record = 2;
constexpr std::uint8_t character_set_number = 90;
constexpr std::uint8_t subject_reference_number = 12;

using Texts = std::vector<std::u16string>;

// The envelope says so with an escape sequence; everything else means the old single-byte sets, or nothing.
bool is_marked_utf8(const ImageFileData& data) {
  return std::any_of(data.iptc.begin(), data.iptc.end(), [](const IptcDataSet& set) {
    return set.record == envelope_record && set.number == character_set_number && set.bytes.starts_with("\x1B%G");
  });
}

bool is_ascii_digit(char byte) {
  return byte >= '0' && byte <= '9';
}

// "IPTC:15054000:SPO:soccer:" says what its eight digits say already.
std::string_view subject_code(std::string_view reference) {
  const std::size_t colon = reference.find(':');
  if (colon == std::string_view::npos) return reference;
  const std::string_view code = reference.substr(colon + 1, 8);
  const bool is_code = code.size() == 8 && std::all_of(code.begin(), code.end(), is_ascii_digit) &&
                       (reference.size() == colon + 9 || reference[colon + 9] == ':');
  return is_code ? code : reference;
}

/// The data sets of one block, decoded.
class DataSets {
 public:
  explicit DataSets(const ImageFileData& data) : data_(data), utf8_(is_marked_utf8(data)) {}

  Texts values(std::uint8_t number) const {
    Texts texts;
    for (const IptcDataSet& set : data_.iptc) {
      if (set.record == application_record && set.number == number) texts.push_back(decode(set));
    }
    return texts;
  }

 private:
  std::u16string decode(const IptcDataSet& set) const {
    std::string_view bytes = std::string_view(set.bytes).substr(0, set.bytes.find('\0'));
    if (set.number == subject_reference_number) bytes = subject_code(bytes);
    return utf8_ ? decode_utf8(bytes) : decode_text(bytes);
  }

  const ImageFileData& data_;
  bool utf8_;
};

Texts values_of(const XmpPacket& packet, const Source& source) {
  Texts texts;
  if (source.property.name.empty()) return texts;
  if (source.repeats) {
    for (const std::string& member : packet.list(source.property)) texts.push_back(decode_utf8(member));
  } else if (const std::string text = packet.text(source.property); !text.empty()) {
    texts.push_back(decode_utf8(text));
  }
  return texts;
}

void append(PropertyDictionary& dictionary, const Source& source, Texts&& texts) {
  if (texts.empty()) return;
  if (source.repeats) {
    dictionary.append(source.key, PropertyValue::Array(texts.begin(), texts.end()));
  } else {
    dictionary.append(source.key, std::move(texts.front()));
  }
}

void append_contact(PropertyDictionary& dictionary, const XmpPacket& packet) {
  PropertyDictionary contact;
  for (const auto& [key, name] : contact_fields) {
    const std::string text = packet.field({iptc_core, "CreatorContactInfo"}, {iptc_core, name});
    if (!text.empty()) contact.append(key, decode_utf8(text));
  }
  if (!contact.empty()) dictionary.append(u"CreatorContactInfo", std::move(contact));
}

}  // namespace

PropertyDictionary iptc_dictionary(const ImageFileData& data) {
  PropertyDictionary dictionary;
  if (data.iptc.empty() && data.xmp_packet.empty()) return dictionary;
  const DataSets sets(data);
  const XmpPacket packet(data.xmp_packet);
  for (const Source& source : sources) {
    Texts texts = source.number == no_number ? Texts() : sets.values(source.number);
    if (texts.empty()) texts = values_of(packet, source);
    append(dictionary, source, std::move(texts));
  }
  append_contact(dictionary, packet);
  return dictionary;
}

}  // namespace brindle
