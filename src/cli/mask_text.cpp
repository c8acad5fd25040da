#include "cli/mask_text.h"

#include <algorithm>

#include "metadata/metadata_catalogue.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

MetaDataField custom_field(std::u16string_view text) {
  const std::u16string token = u"<" + std::u16string(text) + u">";
  return {u"CUSTOM", token, token, std::u16string(text), {}};
}

}  // namespace

MetaDataField field_of_known_token(std::u16string_view token) {
  const MetaDataField* known = find_field(token);
  return known != nullptr ? *known : field_of_token(token);
}

FieldList fields_of_mask(std::u16string_view mask) {
  FieldList fields;
  while (!mask.empty()) {
    const std::size_t open = mask.find(u'<');
    const std::size_t close = open == mask.npos ? mask.npos : mask.find(u'>', open);
    if (open != 0) fields.push_back(custom_field(mask.substr(0, close == mask.npos ? mask.npos : open)));
    if (close == mask.npos) {
      if (open == 0) fields.push_back(custom_field(mask));
      break;
    }
    fields.push_back(field_of_known_token(mask.substr(open, close - open + 1)));
    mask.remove_prefix(close + 1);
  }
  return fields;
}

}  // namespace brindle
