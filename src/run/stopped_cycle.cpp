#include "run/stopped_cycle.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/translation.h"
#include "run/name_cycle.h"

namespace brindle {
namespace {

// Why a member could not be given its name.
Status tell_stranded(const NameCycle& cycle, const std::string& folder, int error) {
  for (std::size_t member = 0; member < cycle.members().size(); ++member) {
    if (!cycle.is_there(member) || cycle.is_at(CycleGoal::old_names, member)) continue;
    const std::string why =
        error == EEXIST ? translated("another file has it; rename that one") : translated(system_error_text(error));
    return Status(translated("in “{}”, “{}” cannot get its name “{}” back: {}", folder, cycle.present_name(member),
                             cycle.members()[member].old_name, why),
                  error);
  }
  return Status(translated("in “{}”, names cannot be given back: {}", folder, translated(system_error_text(error))),
                error);
}

}  // namespace

StoppedCycle::StoppedCycle(JournalReader& journal, const JournalCycle& recorded, std::string_view folder)
    : journal_(journal), recorded_(recorded), folder_(folder), renamed_(recorded.count) {
  for (std::size_t member = 0; member < recorded.count; ++member) {
    old_names_.emplace_back(journal.entries()[recorded.first + member].old_name);
    new_names_.emplace_back(journal.entries()[recorded.first + member].new_name);
  }
}

bool StoppedCycle::all_marked(JournalMark wanted, std::size_t from) const {
  for (std::size_t member = from; member < recorded_.count; ++member) {
    if (mark(member) != wanted) return false;
  }
  return true;
}

Status StoppedCycle::settle() {
  const FolderHandle folder = FolderHandle::open_real(folder_);
  if (folder) return settle_in(folder);
  // What was done stays done; of all else it cannot be known who has which name.
  if (all_marked(JournalMark::done, 0)) {
    renamed_.assign(recorded_.count, true);
    return {};
  }
  return Status(translated("“{}”, where names were being passed round, cannot be reached: {}", folder_,
                           translated(system_error_text(folder.error()))),
                folder.error());
}

Status StoppedCycle::settle_in(const FolderHandle& folder) {
  std::vector<CycleMember> members;
  CycleTraces traces;
  for (std::size_t member = 0; member < recorded_.count; ++member) {
    members.push_back(
        {old_names_[member].c_str(), new_names_[member].c_str(), journal_.entries()[recorded_.first + member].inode});
    if (mark(member) == JournalMark::half) traces.half = member;
  }
  traces.all_but_first_moved = all_marked(JournalMark::done, 1);
  traces.none_begun = all_marked(JournalMark::none, 0);
  const std::string reserved(recorded_.reserved);
  const auto write_down = [this](std::size_t member, JournalMark now) { journal_.mark(recorded_.first + member, now); };
  NameCycle cycle(folder, std::move(members), reserved, write_down);
  if (!cycle.find_out(traces)) {
    return Status(
        translated("in “{}”, names were being passed round, and the disk does not tell who had which; give “{}” "
                   "one that is missing",
                   folder_, reserved));
  }
  if (!cycle.is_at(CycleGoal::new_names) && !cycle.is_at(CycleGoal::old_names)) {
    // Where the disk tells no more than the marks, the outcome must be what they say, should this be killed as well.
    const int error = cycle.bring(traces.all_but_first_moved ? CycleGoal::new_names : CycleGoal::old_names);
    if (error != 0) return tell_stranded(cycle, folder_, error);
    if (::fsync(folder.descriptor()) != 0 && errno != EINVAL) return tell_stranded(cycle, folder_, errno);
  }
  for (std::size_t member = 0; member < recorded_.count; ++member) {
    // Marks have been made since, but of none that is missing.
    renamed_[member] = cycle.is_there(member) ? cycle.is_at(CycleGoal::new_names, member)
                                              : mark(member) == JournalMark::done && cycle.is_at(CycleGoal::new_names);
  }
  return {};
}

}  // namespace brindle
