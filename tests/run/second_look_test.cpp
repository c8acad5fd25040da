#include "run/second_look.h"

#include <gtest/gtest.h>

#include "gather/gather.h"
#include "run/preview.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;
using Lines = std::vector<std::string>;

constexpr RunChoices permuting{.permute = true};
const RunChoices numbering{.on_problem = OnProblem::number};
const RunChoices numbering_permuting{.on_problem = OnProblem::number, .permute = true};
const RunChoices all_or_none{.on_problem = OnProblem::none};

struct LookCase {
  const char* title;
  RunChoices choices;
  Lines listed;    // "old new", or "old" for an item that stays
  Lines unlisted;  // what else is in the folder
  Lines expected;  // the name promised, or the problem; then the warning
};

/// A list whose names were typed, one a row.
class TypedNames {
 public:
  explicit TypedNames(const LookCase& test) {
    for (const std::string& line : test.listed) {
      const std::string name = line.substr(0, line.find(' '));
      tree_.make({name});
      paths_.push_back(tree_ / name);
    }
    tree_.make(test.unlisted);
    addFiles(files_, paths_, {.include_hidden = true}, &names_, {});
    FileSystemItem item;
    for (std::size_t row = 0; row < files_.size(); ++row) {
      const std::string& line = test.listed[row];
      files_.read(row, item);
      item.setNewFilename(line.find(' ') == std::string::npos ? std::u16string_view()
                                                              : decode_file_name(line.substr(line.find(' ') + 1)));
      files_.write(row, item, 255);
    }
    RenameSettings settings;
    settings.selectedTab = static_cast<std::int32_t>(Method::from_list);
    RenamePlan plan(settings, {});
    result_ = preview(files_, plan, names_, {}, test.choices);
  }

  Lines outcomes() const {
    Lines lines;
    for (std::size_t row = 0; row < files_.size(); ++row) lines.push_back(outcome(files_[row]));
    return lines;
  }
  const PreviewResult& result() const { return result_; }

 private:
  static std::string outcome(const ItemRecord& record) {
    static const std::array<std::string, 3> holders = {"unlisted", "stays", "leaves"};
    std::string text(record.carries_new_name ? record.proposed() : word_of(record.problem));
    if (record.problem == Problem::taken) text += " " + holders[static_cast<std::size_t>(record.holder)];
    if (record.problem == Problem::clash) text += std::string(" ") + record.other;
    if (record.bytes_over > 0) text += " " + std::to_string(record.bytes_over);
    if (record.warning != Warning::none) text.append(" !").append(word_of(record.warning));
    return text;
  }

  TempTree tree_;
  Lines paths_;
  FileList files_;
  DiskNames names_;
  PreviewResult result_;
};

const std::vector<LookCase> look_cases = {
    {"the first in order gets the name", {}, {"a x", "b x", "c x"}, {}, {"x !contested", "clash a", "clash a"}},
    {"a swap waits for its choice", {}, {"a b", "b a"}, {}, {"taken leaves", "taken leaves"}},
    {"a swap", permuting, {"a b", "b a"}, {}, {"b", "a"}},
    {"a shift waits, but for its end", {}, {"a b", "b c"}, {}, {"taken leaves", "c"}},
    {"a shift", permuting, {"a b", "b c", "c d"}, {}, {"b", "c", "d"}},
    {"a chain keeps the problem of its end", permuting, {"a b", "b c"}, {"c"}, {"taken stays", "taken unlisted"}},
    {"who stays is in the way", permuting, {"a b", "b"}, {}, {"taken stays", ""}},
    {"a cycle with one too many", permuting, {"a b", "b c", "c a", "d b"}, {}, {"b !contested", "c", "a", "clash a"}},
    {"whoever is beaten by a loser wants a taken name",
     permuting,
     {"a c", "b c", "c d"},
     {"d"},
     {"taken stays", "taken stays", "taken unlisted"}},
    {"a loser keeps its neighbour too",
     permuting,
     {"a x", "b x", "c b"},
     {},
     {"x !contested", "clash a", "taken stays"}},
    {"numbers pass over what is there",
     numbering,
     {"a.t x.t", "b.t x.t", "c.t x.t"},
     {"x (2).t"},
     {"x.t", "x (3).t", "x (4).t"}},
    {"a taken name is numbered", numbering, {"a.t x.t"}, {"x.t"}, {"x (2).t"}},
    {"a number frees the chain", numbering_permuting, {"a b", "b c"}, {"c"}, {"b", "c (2)"}},
    {"numbers do not take what another gets", numbering, {"c x (2)", "a x", "b x"}, {}, {"x (2)", "x", "x (3)"}},
    {"all or none", all_or_none, {"a x", "b x", "c y"}, {}, {" !contested", "clash a", ""}},
    {"alike names",
     {},
     {"a IMG", "b img", "c caf\u00e9", "d cafe\u0301"},
     {},
     {"IMG !alike", "img !alike", "caf\u00e9 !alike", "cafe\u0301 !alike"}},
    {"alike to one that stays", {}, {"a IMG", "img"}, {}, {"IMG !alike", ""}},
    {"its own name in other letters", {}, {"abc ABC"}, {}, {"ABC"}},
    {"another's name in other letters", {}, {"abc ABC"}, {"ABC"}, {"taken unlisted"}},
    {"letter case in a swap", permuting, {"a A", "A a"}, {}, {"A !alike", "a !alike"}},
    {"hidden", {}, {"a .a", ".b .c"}, {}, {".a !hidden", ".c"}},
    {"extensions",
     {},
     {"a.jpg b.png", "c.jpg d", "e.jpg f.jpg", "g h.i"},
     {},
     {"b.png !extension", "d !extension", "f.jpg", "h.i !extension"}},
    {"too long", {}, {"a " + std::string(260, 'x')}, {}, {"unwritable 5"}},
};

class SecondLook : public testing::TestWithParam<LookCase> {};

TEST_P(SecondLook, SaysWhoGetsItsName) {
  EXPECT_EQ(TypedNames(GetParam()).outcomes(), GetParam().expected) << GetParam().title;
}
INSTANTIATE_TEST_SUITE_P(Cases, SecondLook, testing::ValuesIn(look_cases));

TEST(SecondLookCounts, PromisesProblemsAndWarnings) {
  const PreviewResult result = TypedNames({"", {}, {"a x", "b x", "c .c", "d"}, {}, {}}).result();
  EXPECT_EQ(result.renameable, 2U);
  EXPECT_EQ(result.problems, 1U);
  EXPECT_EQ(result.warnings, 2U);
}

}  // namespace
}  // namespace brindle
