#include "log/journal.h"

#include <gmock/gmock.h>

#include <memory>

#include "log/journal_format.h"
#include "support/log_support.h"

namespace brindle::test {
namespace {

using State = JournalReader::State;

struct Made {
  std::unique_ptr<JournalWriter> writer = std::make_unique<JournalWriter>();
  std::string path;
};

constexpr std::size_t no_cycle = SIZE_MAX;

Made make_journal(const TempTree& tree, std::size_t entries, std::size_t first_in_cycle = no_cycle) {
  Made made;
  made.path = tree / "logs/Log 01-01-2026 00-00-00-#.journal";
  EXPECT_EQ(made.writer->create(made.path, {true, true, "4.5.6"}).reason(), "");
  for (std::size_t i = 0; i < entries; ++i) {
    if (i == first_in_cycle) made.writer->begin_cycle(2, ".reserved");
    const auto folder = static_cast<std::uint32_t>(1000 - i / 3);
    if (i % 3 == 0) made.writer->add_folder(folder, "/folder/" + std::string(i, 'f'));
    made.writer->add(folder, "old" + std::to_string(i), std::string(i % 255 + 1, 'n'), i * 1'000'000'007);
  }
  return made;
}

TEST(Journal, comes_back_as_it_was_written) {
  const LogTree tree;
  constexpr std::size_t entries = 3000;
  Made made = make_journal(tree, entries);
  EXPECT_EQ(JournalReader().open(made.path), State::in_progress);
  ASSERT_EQ(made.writer->seal().reason(), "");
  made.writer->mark(1, JournalMark::begun);
  made.writer->mark(2, JournalMark::done);
  made.writer->mark(entries - 1, JournalMark::failed);
  EXPECT_EQ(JournalReader().open(made.path), State::in_progress);
  made.writer.reset();
  JournalReader reader;
  ASSERT_EQ(reader.open(made.path), State::sealed);
  EXPECT_EQ(JournalReader().open(made.path), State::in_progress) << "two recoveries at once";
  EXPECT_TRUE(reader.info().isFolders && reader.info().paths_follow);
  EXPECT_EQ(reader.info().appversion, "4.5.6");
  ASSERT_EQ(reader.entries().size(), entries);
  for (std::size_t i = 0; i < entries; ++i) {
    const JournalEntry& entry = reader.entries()[i];
    EXPECT_EQ(reader.folders()[entry.folder], "/folder/" + std::string(i / 3 * 3, 'f'));
    EXPECT_EQ(entry.old_name, "old" + std::to_string(i));
    EXPECT_EQ(entry.new_name, std::string(i % 255 + 1, 'n'));
    EXPECT_EQ(entry.inode, i * 1'000'000'007);
  }
  EXPECT_EQ(reader.entries()[0].mark, JournalMark::none);
  EXPECT_EQ(reader.entries()[1].mark, JournalMark::begun);
  EXPECT_EQ(reader.entries()[2].mark, JournalMark::done);
  EXPECT_EQ(reader.entries()[entries - 1].mark, JournalMark::failed);
}

// A journal cut short behind its header never reached its first rename; with a mark in it, or a part of a header, it
// may have, and is not thrown away.
TEST(Journal, is_worth_nothing_when_cut_or_changed) {
  const LogTree tree;
  Made made = make_journal(tree, 7);
  ASSERT_EQ(made.writer->seal().reason(), "");
  const std::string whole = content_of(made.path);
  made.writer->mark(3, JournalMark::done);
  const std::string marked = content_of(made.path);
  made.writer.reset();
  ASSERT_EQ(JournalReader().parse(marked), State::sealed);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const bool nothing_begun = size == 0 || size >= sizeof(JournalHeader);
    EXPECT_EQ(JournalReader().parse(std::string_view(whole).substr(0, size)),
              nothing_begun ? State::unsealed : State::damaged)
        << size;
    EXPECT_NE(JournalReader().parse(std::string_view(marked).substr(0, size)), State::sealed) << size;
  }
  JournalHeader header;
  std::memcpy(&header, whole.data(), sizeof header);
  for (std::size_t at = 0; at < sizeof header + header.body_size; ++at) {
    std::string changed = marked;
    changed[at] = static_cast<char>(changed[at] ^ 0x10);
    EXPECT_EQ(JournalReader().parse(changed), State::damaged) << at;
  }
}

TEST(Journal, knows_which_entries_pass_their_names_round) {
  struct Case {
    std::size_t entries;
    std::size_t first;
    State state;
  };
  // Three entries a folder: a cycle lies in one, and is whole.
  for (const Case& test : {Case{7, no_cycle, State::sealed}, Case{7, 1, State::sealed}, Case{7, 3, State::sealed},
                           Case{7, 2, State::damaged}, Case{7, 6, State::damaged}}) {
    const LogTree tree;
    Made made = make_journal(tree, test.entries, test.first);
    ASSERT_EQ(made.writer->seal().reason(), "");
    made.writer->mark(0, JournalMark::done);
    const std::string bytes = content_of(made.path);
    JournalReader reader;
    ASSERT_EQ(reader.parse(bytes), test.state) << test.first;
    EXPECT_EQ(static_cast<int>(bytes[8]), test.first == no_cycle ? 1 : 2) << "the version";
    if (test.state != State::sealed || test.first == no_cycle) continue;
    ASSERT_EQ(reader.cycles().size(), 1U);
    EXPECT_EQ(reader.cycles()[0].first, test.first);
    EXPECT_EQ(reader.cycles()[0].count, 2U);
    EXPECT_EQ(reader.cycles()[0].reserved, ".reserved");
  }
}

TEST(Journal, cannot_be_begun_over_another_or_sealed_on_a_full_disk) {
  const LogTree tree;
  Made made = make_journal(tree, 1);
  JournalWriter second;
  EXPECT_EQ(second.create(made.path, {}).error(), EEXIST);
  made.writer->remove();
  EXPECT_EQ(JournalReader().open(made.path), State::missing);
  for (const rlim_t space : {rlim_t{100'000}, rlim_t{4096}, rlim_t{4096 + 10}, rlim_t{10}}) {
    const FullDisk full(space);
    JournalWriter writer;
    ASSERT_EQ(writer.create(made.path, {}).reason(), "");
    writer.add_folder(0, "/");
    const std::size_t entries = space > 5000 ? 50'000 : 20;
    for (std::size_t i = 0; i < entries; ++i) writer.add(0, "old", "new", i);
    EXPECT_THAT(writer.seal().reason(), ::testing::HasSubstr("File too large"));
    writer.remove();
  }
  EXPECT_THAT(tree.names_in("logs"), ::testing::IsEmpty());
}

TEST(Journal, checksum_does_not_depend_on_the_pieces) {
  std::string bytes;
  for (int i = 0; i < 100; ++i) bytes.push_back(static_cast<char>(i * 37));
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    Checksum checksum;
    checksum.add(std::string_view(bytes).substr(0, cut));
    checksum.add(std::string_view(bytes).substr(cut));
    EXPECT_EQ(checksum.value(), checksum_of(bytes)) << cut;
  }
  EXPECT_NE(checksum_of("a"), checksum_of(std::string_view("a\0", 2)));
}

}  // namespace
}  // namespace brindle::test
