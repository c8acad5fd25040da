// The masks of audio tags and of photo fields, and the lists of extensions.

#include <algorithm>
#include <utility>

#include "app/options_controller.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

// Where entries are written one by one, a text of the user's own is known by its brackets; where the mask is one text,
// the brackets would be written along.
void bracket_own_texts(RenameSettings& settings) {
  const bool one_by_one = settings.isID3RenamingSeperator && !is_blank(settings.id3RenamingSeperator);
  for (MetaDataField& field : settings.id3RenamingTagsList) {
    const std::u16string token = field.tagCode;
    if (std::ranges::find(audio_tokens, token) != audio_tokens.end()) continue;
    const bool is_bracketed = token.size() >= 2 && token.front() == u'<' && token.back() == u'>';
    if (is_bracketed == one_by_one) continue;
    field = field_of_token(one_by_one ? u"<" + token + u">" : token.substr(1, token.size() - 2));
  }
}

}  // namespace

void OptionsController::id3RenamingMaskActions(std::u16string_view entry) {
  settings_.commit([entry](RenameSettings& settings) {
    settings.id3RenamingTagsList.push_back(field_of_token(entry));
    bracket_own_texts(settings);
    resetID3Mask(settings);
  });
  model_.tell(Changed::masks);
}

void OptionsController::id3RenamingMaskRemoveLast() {
  if (values().id3RenamingTagsList.empty()) return;
  settings_.commit([](RenameSettings& settings) {
    settings.id3RenamingTagsList.pop_back();
    resetID3Mask(settings);
  });
  model_.tell(Changed::masks);
}

void OptionsController::setPhotoMetaDataList(FieldList fields) {
  settings_.commit([&fields](RenameSettings& settings) {
    settings.photoMetaDataList = std::move(fields);
    resetPhotoMask(settings);
  });
  model_.tell(Changed::masks);
}

void OptionsController::ExtensionsEditorControllerDidFinish(std::int32_t itemType, TextList extensions) {
  settings_.commit([&](RenameSettings& settings) {
    (itemType == 0 ? settings.photoExtensions : settings.id3Extensions) = std::move(extensions);
  });
}

void OptionsController::rebuild_masks(const SettingsChange& change) {
  const bool audio = !values().id3RenamingTagsList.empty() && !change.contains("id3RenamingMask") &&
                     (change.contains("isID3RenamingSeperator") || change.contains("id3RenamingSeperator"));
  const bool photo = !values().photoMetaDataList.empty() && !change.contains("photoRenamingMask") &&
                     (change.contains("isPhotoRenamingSeperator") || change.contains("photoRenamingSeperator"));
  if (!audio && !photo) return;
  settings_.commit([=](RenameSettings& settings) {
    if (audio) {
      bracket_own_texts(settings);
      resetID3Mask(settings);
    }
    if (photo) resetPhotoMask(settings);
  });
  model_.tell(Changed::masks);
}

}  // namespace brindle
