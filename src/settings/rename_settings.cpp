#include "settings/rename_settings.h"

#include <algorithm>

namespace brindle {
namespace {

bool is_audio_token(std::u16string_view entry) {
  return std::ranges::find(audio_tokens, entry) != audio_tokens.end();
}

}  // namespace

std::optional<Method> selected_method(const RenameSettings& settings) {
  constexpr std::int32_t method_count = 0
// NOLINTNEXTLINE(bugprone-macro-parentheses): the signs make the sum
#define METHOD_NAME(name) +1
#include "settings/settings.def"
      ;
  const std::int32_t tab = settings.selectedTab;
  return tab >= 0 && tab < method_count ? std::optional(static_cast<Method>(tab)) : std::nullopt;
}

void loadEmptyProfile(RenameSettings& settings, Date now) {
  settings = RenameSettings{};
  settings.dateTimeCustomDate = now;
  resetPhotoMask(settings);
  resetID3Mask(settings);
}

bool resetPhotoMask(RenameSettings& settings) {
  std::u16string mask;
  for (const MetaDataField& field : settings.photoMetaDataList) {
    if (settings.isPhotoRenamingSeperator && !mask.empty()) mask += settings.photoRenamingSeperator.value_or(u"");
    mask += field.tagCode;
  }
  settings.photoRenamingMask = mask;
  return !mask.empty();
}

bool resetID3Mask(RenameSettings& settings) {
  std::u16string mask;
  bool after_token = false;
  for (const MetaDataField& field : settings.id3RenamingTagsList) {
    if (settings.isID3RenamingSeperator && !mask.empty() && after_token) {
      mask += settings.id3RenamingSeperator.value_or(u"");
    }
    mask += field.tagCode;
    after_token = is_audio_token(field.tagCode);
  }
  settings.id3RenamingMask = mask;
  return !mask.empty();
}

}  // namespace brindle
