#include "settings/rename_settings.h"

#include <algorithm>
#include <string_view>

namespace brindle {
namespace {

bool is_audio_token(std::u16string_view entry) {
  return std::ranges::find(audio_tokens, entry) != audio_tokens.end();
}

}  // namespace

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
