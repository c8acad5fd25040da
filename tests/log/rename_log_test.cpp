#include "log/rename_log.h"

#include <gmock/gmock.h>

#include <pugixml.hpp>
#include <thread>

#include "log/log_name.h"
#include "run/run_log.h"
#include "support/log_support.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(RenameLog, stands_on_disk_as_specified) {
  const LogTree tree;
  const std::string open = tree.logs() + "/Log 15-11-2026 03-17-45-#.xml";
  RenameLogWriter log;
  ASSERT_EQ(log.createLogFile(open, "FILES", "4.0").reason(), "");
  EXPECT_EQ(content_of(open),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<files appversion=\"4.0\" type=\"FILES\"/>\n");
  log.addLogEntry("/a b/c&d/old:1.txt", "/a b/c&d/new\n\"2\".txt");
  log.addLogEntry("/x", "/y");
  ASSERT_EQ(log.saveLog().reason(), "");
  EXPECT_EQ(log.saved_path(), tree.logs() + "/Log 15-11-2026 03-17-45-2.xml");
  EXPECT_EQ(content_of(log.saved_path()),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<files appversion=\"4.0\" type=\"FILES\">\n"
            "    <file srclocation=\"/a b/c&amp;d\" tarlocation=\"/a b/c&amp;d\" srcfilename=\"old/1.txt\" "
            "tarfilename=\"new&#10;&quot;2&quot;.txt\"/>\n"
            "    <file srclocation=\"/\" tarlocation=\"/\" srcfilename=\"x\" tarfilename=\"y\"/>\n</files>\n");
  EXPECT_THAT(tree.names_in("logs"), ElementsAre("Log 15-11-2026 03-17-45-2.xml"));
}

// Every kind of name that a disk can hold, as file and as folder.
TEST(RenameLog, brings_every_name_back) {
  std::vector<std::string> names = {"plain",
                                    " blanks ",
                                    "a:b",
                                    "\u00e9t\u00e9",
                                    "\u65e5\u672c\u8a9e",
                                    "\U0001F600",
                                    "&<>\"'",
                                    "tab\there",
                                    "line\nend",
                                    "\r",
                                    "%41",
                                    "\x01",
                                    "\x7f",
                                    "\xff",
                                    "a\xc3",
                                    "\xed\xa0\x80",
                                    "\xef\xbf\xbe",
                                    "\xef\xbf\xbf",
                                    "\xef\xbf\xbd",
                                    "\xee\xbe\x80",
                                    "\xee\xbf\xbf",
                                    "\xee\xbc\x80",
                                    "\xf0\x9f\xbf\xbf",
                                    "\xf4\x90\x80\x80",
                                    "\xc0\xaf",
                                    "]]>",
                                    "&#10;",
                                    "...",
                                    "-",
                                    std::string(255, 'n')};
  std::string all_bytes;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '/') all_bytes.push_back(static_cast<char>(byte));
  }
  names.push_back(all_bytes);
  const LogTree tree;
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string& other = names[(i + 7) % names.size()];
    pairs.emplace_back("/" + names[i] + "/" + other, "/" + names[i] + "/" + names[i]);
    pairs.emplace_back("/plain/" + names[i], "/" + other + "/plain");
    pairs.emplace_back("/" + names[i], "/" + other);
  }
  const std::string path = make_log(tree.logs(), pairs);
  const Result<LogFile> log = readLogFile(path);
  ASSERT_EQ(log.reason(), "");
  EXPECT_EQ(pairs_in(*log), pairs);
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(path.c_str(), pugi::parse_full));
}

TEST(RenameLog, keeps_the_bytes_of_what_xml_cannot_hold) {
  const LogTree tree;
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(
      make_log(tree.logs(), {{"/f/a\x01:%", "/f/b"}, {"/g\x02/c d", "/f/e"}, {"/f/\xff", "/f/h"}}).c_str()));
  const auto text = [](const pugi::xml_node& file, const char* name) {
    return std::string(file.attribute(name).value());
  };
  const pugi::xml_node first = document.child("files").child("file");
  EXPECT_EQ(text(first, "srcfilename"), "a\uFFFD/%");
  EXPECT_EQ(text(first, "srcbytes"), "a%01%3A%25");
  EXPECT_EQ(text(first, "tarbytes"), "b");
  const pugi::xml_node second = first.next_sibling();
  EXPECT_EQ(text(second, "srclocation"), "/g\uFFFD");
  EXPECT_EQ(text(second, "srcbytes"), "/g%02/c%20d");
  EXPECT_EQ(text(second, "tarbytes"), "e");
  const pugi::xml_node third = second.next_sibling();
  EXPECT_EQ(text(third, "srcfilename"), "\uEFFF");
  EXPECT_FALSE(third.attribute("srcbytes"));
}

TEST(RenameLog, is_never_put_over_another_file) {
  const LogTree tree;
  const std::string open = tree.logs() + "/Log 31-12-2026 23-59-59-#.xml";
  RenameLogWriter log;
  ASSERT_EQ(log.createLogFile(open, "FILES").reason(), "");
  RenameLogWriter second;
  EXPECT_THAT(second.createLogFile(open, "FILES").reason(), HasSubstr("File exists"));
  write_file(finished_log_path(open, 0), "mine");
  ASSERT_EQ(log.saveLog().reason(), "");
  EXPECT_EQ(log.saved_path(), tree.logs() + "/Log 01-01-2027 00-00-00-0.xml");
  EXPECT_EQ(content_of(finished_log_path(open, 0)), "mine");
}

TEST(RenameLog, leaves_no_half_log_on_a_full_disk) {
  const LogTree tree;
  const std::string open = tree.logs() + "/Log 01-01-2026 00-00-00-#.xml";
  RenameLogWriter log;
  ASSERT_EQ(log.createLogFile(open, "FILES").reason(), "");
  {
    const FullDisk full(100'000);
    for (int i = 0; i < 2000; ++i) log.addLogEntry("/some/folder/or/other/old", "/some/folder/or/other/new");
    EXPECT_THAT(log.saveLog().reason(), HasSubstr("cannot be saved: File too large"));
  }
  EXPECT_EQ(log.saved_path(), "");
  EXPECT_THAT(tree.names_in("logs"), ElementsAre("Log 01-01-2026 00-00-00-#.xml"));
}

TEST(RenameLog, counts_and_seconds_go_into_the_name_only) {
  EXPECT_EQ(finished_log_path("/#/Log #/Log 1-#.xml", 12), "/#/Log #/Log 1-12.xml");
  EXPECT_EQ(finished_log_path("/#/log.xml", 12), "/#/log.xml");
  EXPECT_EQ(next_log_path("/#/Log 28-02-2028 23-59-59-#.xml"), "/#/Log 29-02-2028 00-00-00-#.xml");
  EXPECT_EQ(next_log_path("/#/Log yesterday-#.xml"), "");
  const std::string name = getNewLogFileName(1'795'000'000);
  EXPECT_EQ(name.size(), std::string_view("Log 15-11-2026 03-17-45-#.xml").size());
  EXPECT_EQ(log_time("/x/" + name), 1'795'000'000);
  EXPECT_TRUE(is_open_log_name(name));
}

// Runs that begin in one second, some of them over already, some going on in other threads.
TEST(RenameLog, two_runs_never_share_a_name) {
  const LogTree tree;
  const std::time_t when = 1'795'000'000;
  write_file(tree.logs() + "/" + getNewLogFileName(when), "left behind");
  write_file(finished_log_path(tree.logs() + "/" + getNewLogFileName(when + 1), 7), "finished");
  constexpr std::size_t runs = 8;
  std::vector<JournalWriter> journals(runs);
  std::vector<RenameLogWriter> logs(runs);
  {
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < runs; ++i) {
      threads.emplace_back(
          [&, i] { EXPECT_EQ(begin_run_log(tree.logs(), when, {}, journals[i], logs[i]).reason(), ""); });
    }
  }
  std::vector<std::string> paths;
  for (RenameLogWriter& log : logs) {
    paths.push_back(log.path());
    EXPECT_GE(log_time(log.path()), when + 2);
    EXPECT_EQ(log.saveLog().reason(), "");
  }
  std::sort(paths.begin(), paths.end());
  EXPECT_EQ(std::unique(paths.begin(), paths.end()), paths.end());
  EXPECT_EQ(content_of(tree.logs() + "/" + getNewLogFileName(when)), "left behind");
}

TEST(RenameLog, begins_no_run_where_nothing_can_be_written) {
  JournalWriter journal;
  RenameLogWriter log;
  EXPECT_THAT(begin_run_log("/proc/nowhere", 0, {}, journal, log).reason(), HasSubstr("No such file or directory"));
  const LogTree tree;
  const FullDisk full(10);
  EXPECT_THAT(begin_run_log(tree.logs(), 0, {}, journal, log).reason(), HasSubstr("Log 01-01-1970"));
  EXPECT_THAT(tree.names_in("logs"), IsEmpty());
}

constexpr std::string_view attributes = R"(srclocation="/a" tarlocation="/b" srcfilename="c" tarfilename="d")";

struct Hostile {
  std::string xml;
  std::vector<std::string> entries;  // usable ones as "old>new"; "?" for one with a fault
  bool readable = true;
};

std::vector<Hostile> hostile_logs() {
  const std::string entry = "<file " + std::string(attributes) + "/>";
  const auto with = [](const std::string& source_folder, const std::string& source_name, const std::string& more = "") {
    return "<files><file srclocation=\"" + source_folder + "\" tarlocation=\"/b\" srcfilename=\"" + source_name +
           "\" tarfilename=\"d\" " + more + "/></files>";
  };
  std::string deep;
  for (int i = 0; i < 200'000; ++i) deep += "<file>";
  return {
      {"", {}, false},
      {"no xml at all", {}, false},
      {"<files>" + entry, {}, false},
      {"<files>" + entry + "</file>", {}, false},
      {"<files><file srclocation=\"/a</files>", {}, false},
      {"<rules>" + entry + "</rules>", {}, false},
      {"<files/><files>" + entry + "</files>", {}, false},
      {"<files>" + deep, {}, false},
      {with("/a", "c&#0;d"), {}, false},
      {with("/a", "c&#x00;d"), {}, false},
      {"<files/>", {}},
      {"<?xml version='1.0'?><!DOCTYPE files [<!ENTITY e SYSTEM \"/etc/passwd\">]><files>" + entry + "</files>",
       {"/a/c>/b/d"}},
      {"<files>" + entry + "<other>" + entry + "</other><!-- " + entry + " -->" + entry + "text</files>",
       {"/a/c>/b/d", "/a/c>/b/d"}},
      {"<files><file/>" + entry + "<file srclocation=\"/a\" tarlocation=\"/b\" srcfilename=\"c\"/></files>",
       {"?", "/a/c>/b/d", "?"}},
      {with("/a/", "c"), {"/a/c>/b/d"}},
      {with("/", "c"), {"/c>/b/d"}},
      {with("/a", "x/../../y"), {"/a/x:..:..:y>/b/d"}},
      {with("/a", ".."), {"?"}},
      {with("/a", "."), {"?"}},
      {with("/a", ""), {"?"}},
      {with("", "c"), {"?"}},
      {with("a", "c"), {"?"}},
      {with("../a", "c"), {"?"}},
      {with("/a", "c", "srcbytes=\"..%2Fd\""), {"?"}},
      {with("/a", "c", "srcbytes=\"d%00\""), {"?"}},
      {with("/a", "c", "srcbytes=\"/e%00/d\""), {"?"}},
      {with("/a", "c", "srcbytes=\"/e/\""), {"?"}},
      {with("/a", "c", "srcbytes=\"%4\""), {"?"}},
      {with("/a", "c", "srcbytes=\"%zz\""), {"?"}},
      {with("/a", "c", "srcbytes=\"/e/%ff\""), {"/e/\xff>/b/d"}},
      {with("/a", "&unknown;"), {"/a/&unknown;>/b/d"}},
      {with("/a", " \t\n"), {"/a/ \t\n>/b/d"}},
  };
}

TEST(RenameLog, reads_hostile_logs_without_harm) {
  const LogTree tree;
  const std::string path = tree / "hostile.xml";
  for (const Hostile& hostile : hostile_logs()) {
    SCOPED_TRACE(hostile.xml.substr(0, 300));
    write_file(path, hostile.xml);
    const Result<LogFile> log = readLogFile(path);
    EXPECT_EQ(log.ok(), hostile.readable) << log.reason();
    EXPECT_EQ(verifyLogFile(path), !hostile.entries.empty());
    std::vector<std::string> found;
    for (const LogEntry& entry : log.ok() ? log->entries : std::vector<LogEntry>()) {
      found.push_back(!entry.fault.empty() ? "?"
                                           : join(entry.source_folder, entry.source_name) + ">" +
                                                 join(entry.target_folder, entry.target_name));
    }
    EXPECT_EQ(found, hostile.entries);
  }
}

TEST(RenameLog, reads_other_encodings_and_refuses_what_is_no_file) {
  const LogTree tree;
  const std::string ascii = "<files appversion=\"3\" type=\"FOLDERS\"><file " + std::string(attributes) + "/></files>";
  std::string wide = "\xff\xfe";
  for (const char c : ascii) wide += {c, '\0'};
  write_file(tree / "wide.xml", wide);
  const Result<LogFile> log = readLogFile(tree / "wide.xml");
  ASSERT_EQ(log.reason(), "");
  EXPECT_EQ(log->type + log->appversion, "FOLDERS3");
  EXPECT_THAT(pairs_in(*log), ElementsAre(Pair("/a/c", "/b/d")));
  ASSERT_EQ(::mkfifo((tree / "pipe.xml").c_str(), 0600), 0);
  for (const std::string& path : {tree / "pipe.xml", tree / "logs", tree / "missing.xml", std::string("/dev/zero")}) {
    EXPECT_THAT(readLogFile(path).reason(), HasSubstr(path));
  }
}

TEST(RenameLog, lists_logs_newest_first) {
  const LogTree tree;
  for (const char* name :
       {"Log 02-01-2026 00-00-00-3.xml", "Log 01-01-2026 00-00-00-12.XML", "Log 03-01-2026 00-00-00-#.xml", "other.xml",
        "a-7b-08x.xml", "42.xml", "xml", "notes.txt", "Log 02-01-2026 00-00-00-3.xml.undo"}) {
    write_file(tree.logs() + "/" + name, "x");
    std::this_thread::sleep_for(std::chrono::milliseconds(12));
  }
  std::vector<std::string> found;
  for (const LogRecord& record : loadUserLogFiles(tree.logs())) {
    found.push_back(record.logFileName + " " + std::to_string(record.filesCount));
    const auto age = std::chrono::system_clock::now() - record.dateCreated;
    EXPECT_LT(std::chrono::abs(age), std::chrono::hours(1));
  }
  EXPECT_THAT(found, ElementsAre("42.xml 42", "a-7b-08x.xml 8", "other.xml 0", "Log 01-01-2026 00-00-00-12.XML 12",
                                 "Log 02-01-2026 00-00-00-3.xml 3"));
  EXPECT_THAT(loadUserLogFiles(tree / "nowhere"), IsEmpty());
}

}  // namespace
}  // namespace brindle::test
