#pragma once

#include <string>

namespace brindle {

/// How the preview follows what is typed. Stored in the user defaults.
struct LivePreviewPreferences {
  bool isLivePreviewEnabled = true;
  bool isLivePreviewAllFiles = false;
  std::u16string livePreviewFilesLimit = u"2500";  ///< items; what is no number counts as 0
};

}  // namespace brindle
