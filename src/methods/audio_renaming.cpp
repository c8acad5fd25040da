#include "methods/audio_renaming.h"

#include <algorithm>

#include "text/string_utilities.h"
#include "text/text_case.h"

namespace brindle {
namespace {

// Values may hold tokens, which are replaced in their turn. What grows beyond this is no name any more.
constexpr std::size_t length_limit = 65536;

// Tokens come in the order of the tags.
constexpr AudioTags tag_bit(std::size_t token) {
  return audio_tags(static_cast<AudioTag>(token));
}

constexpr bool may_hold_colons(std::size_t token) {
  return audio_tokens[token] != u"<Year>" && audio_tokens[token] != u"<TrackNumber>";
}

}  // namespace

AudioParameters::AudioParameters(const RenameSettings& settings)
    : mask_(on_disk(text_of(settings.id3RenamingMask))),
      separator_(settings.isID3RenamingSeperator ? on_disk(text_of(settings.id3RenamingSeperator)) : std::u16string()),
      replaces_colons_(settings.isID3RenamingColonReplace),
      colon_replacement_(on_disk(text_of(settings.id3RenamingColonReplace))),
      extensions_(settings.id3Extensions.begin(), settings.id3Extensions.end()) {
  for (const MetaDataField& field : settings.id3RenamingTagsList) entries_.push_back(entry_of(field.tagCode));
  for (std::size_t i = 0; i < tokens_.size(); ++i) tokens_[i] = SearchText(audio_tokens[i], true);
  if (separator_.empty()) {
    want_for_mask();
  } else {
    for (const Entry& entry : entries_) {
      if (entry.token) wanted_ |= tag_bit(*entry.token);
    }
  }
}

void AudioParameters::want_for_mask() {
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    if (tokens_[i].find(mask_) != SearchText::npos) wanted_ |= tag_bit(i);
  }
}

AudioParameters::Entry AudioParameters::entry_of(std::u16string_view tag) {
  const auto found = std::ranges::find(audio_tokens, tag);
  if (found != audio_tokens.end()) return {static_cast<std::size_t>(found - audio_tokens.begin()), {}};
  const bool is_bracketed = tag.size() >= 2 && tag.front() == u'<' && tag.back() == u'>';
  return {std::nullopt, is_bracketed ? std::u16string(tag.substr(1, tag.size() - 2)) : std::u16string()};
}

bool AudioParameters::takes_part(std::u16string_view extension) const {
  if (mask_.empty()) return false;
  std::u16string key = u".";
  append_upper_case(extension, key);
  return extensions_.contains(key);
}

void AudioParameters::append_value(const AudioAttributes& attributes, std::size_t token, std::u16string& out) const {
  const std::u16string& value = attributes[token];
  if (!replaces_colons_ || !may_hold_colons(token)) {
    out += value;
    return;
  }
  for (const char16_t unit : value) {
    if (unit == u':') {
      out += colon_replacement_;
    } else {
      out += unit;
    }
  }
}

// A separator stands before a text of the user's own, but never straight behind it.
void AudioParameters::write_separated(const AudioAttributes& attributes, WorkingName& name) const {
  std::u16string& out = name.result;
  bool after_text = false;
  for (const Entry& entry : entries_) {
    const std::size_t start = out.size();
    if (start > 0 && !after_text) out += separator_;
    const std::size_t value = out.size();
    if (entry.token) {
      append_value(attributes, *entry.token, out);
      if (out.size() == value) name.note(Warning::no_value);
      if (out.size() == value) out.resize(start);
    } else {
      out += entry.text;
    }
    after_text = !entry.token;
  }
}

// One token after the other, so that a token in a value counts when its turn is still to come.
void AudioParameters::write_mask(const AudioAttributes& attributes, WorkingName& name) const {
  name.result = mask_;
  std::u16string value;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    if (tokens_[i].find(name.result) == SearchText::npos) continue;
    value.clear();
    append_value(attributes, i, value);
    if (value.empty()) name.note(Warning::no_value);
    name.scratch.clear();
    std::size_t done = 0;
    for (std::size_t at = 0; (at = tokens_[i].find(name.result, done)) != SearchText::npos;) {
      name.scratch.append(name.result, done, at - done).append(value);
      done = at + tokens_[i].size();
      if (name.scratch.size() > length_limit) break;
    }
    name.scratch.append(name.result, done);
    name.result.assign(name.scratch, 0, length_limit);
  }
}

void AudioParameters::write_name(const AudioAttributes& attributes, WorkingName& name) const {
  if (separator_.empty()) {
    write_mask(attributes, name);
  } else {
    write_separated(attributes, name);
  }
  if (name.result.empty()) name.result = name.base;
}

NameOutcome AudioParameters::make_name(StepRun& run) const {
  return renameByID3Tags(*this, run.item, run.audio, run.name);
}

NameOutcome renameByID3Tags(const AudioParameters& parameters, const FileSystemItem& item, const AudioAttributes* read,
                            WorkingName& name) {
  if (!parameters.takes_part(name.extension)) {
    name.result = name.base;
  } else if (read != nullptr || !parameters.reads_files()) {
    static const AudioAttributes nothing;
    parameters.write_name(read != nullptr ? *read : nothing, name);
  } else {
    parameters.write_name(read_audio_attributes(item.disk_path(), parameters.wanted_tags()), name);
  }
  return NameOutcome::base;
}

namespace {

void add_audio_rows(RuleRows& rows, RuleVariant) {
  rows.text("Renaming Mask", &RenameSettings::id3RenamingMask);
  rows.text_if(&RenameSettings::isID3RenamingSeperator, "Separator", &RenameSettings::id3RenamingSeperator);
  rows.text_if(&RenameSettings::isID3RenamingColonReplace, "Replace colon[:] with character(s)",
               &RenameSettings::id3RenamingColonReplace);
  rows.list("Allowed Extensions", rows.settings.id3Extensions);
}

constexpr auto audio_kinds = std::to_array<RuleKind>({{RuleVariant::id3_tag, u"ID3Tag"}});

constexpr auto absent_audio_options =
    std::to_array<AbsentOption>({{&RenameSettings::id3RenamingSeperator}, {&RenameSettings::id3RenamingColonReplace}});

constexpr auto audio_requirements =
    std::to_array<Requirement>({{&RenameSettings::id3RenamingMask, "ID3INVALIDINPUT", "INVALIDID3RENAMINGMASK"}});

}  // namespace

constexpr MethodRow audio_method = {
    .method = Method::audio,
    .title = "METHODAUDIO",
    .icon = "audio",
    .rule = u"ID3",
    .kinds = audio_kinds,
    .absent = absent_audio_options,
    .required = audio_requirements,
    .step = step_of<AudioParameters>,
    .add_rows = add_audio_rows,
};

}  // namespace brindle
