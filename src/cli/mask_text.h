#pragma once

// Metadata masks typed as one text, such as "<EXIF_Date>_<EXIF_Time> <IPTC_Origin_City>": tokens in angle brackets, and
// between them text of the user's own. Pure; any thread.

#include <string>
#include <string_view>

#include "settings/rename_settings.h"

namespace brindle {

/// The fields of a mask, in order. A token of the metadata catalogue becomes its field, one of audio_tokens a field of
/// its own, and everything else a custom text (a bracketed word that is no token stands for the word).
FieldList fields_of_mask(std::u16string_view mask);

/// The field that a token in angle brackets stands for.
MetaDataField field_of_known_token(std::u16string_view token);

}  // namespace brindle
