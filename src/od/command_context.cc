#include "od/command_context.h"

#include <exception>

#include "od/format.h"
#include "od/string_table.h"

namespace veltor::od {

namespace {

// Reports a failed command on the command line. Printing can itself fail (out of memory);
// nothing may escape, so such a failure is dropped.
void ReportFailure(Host& host, const std::string& name, const char* what) noexcept {
  try {
    host.Ed().Print(what ? Format(Str(kStrCommandFailed), name.c_str(), what)
                         : Format(Str(kStrCommandFailedUnknown), name.c_str()));
  } catch (...) {
  }
}

}  // namespace

Status CommandContext::LockForWrite() {
  if (lock_) return Status::Ok();
  Database* db = host_.WorkingDatabase();
  if (!db) return Status::Error(name_ + ": no drawing is open");
  Result<std::unique_ptr<WriteLock>> lock = db->LockForWrite();
  if (!lock.ok()) return lock.status().Wrap(name_);
  lock_ = std::move(*lock);
  return Status::Ok();
}

bool RunCommand(Host& host, const std::string& name,
                const std::function<void(CommandContext&)>& handler) {
  bool opened = false;
  bool finished = false;
  try {
    opened = host.App().BeginUndoGroup(name);
    // The context (and the lock it may hold) ends before the undo group closes.
    CommandContext context(host, name);
    handler(context);
    finished = !context.cancelled();
  } catch (const std::exception& e) {
    ReportFailure(host, name, e.what());
  } catch (...) {
    ReportFailure(host, name, nullptr);
  }
  try {
    if (!finished) {
      host.App().TakeBackUndoGroup();
    } else if (opened) {
      host.App().EndUndoGroup();
    }
  } catch (...) {
    ReportFailure(host, name, "the drawing could not be restored");
    return false;
  }
  return finished;
}

LuprecBracket::LuprecBracket(Host& host) : db_(host.WorkingDatabase()) {
  if (!db_) return;
  saved_ = db_->GetIntVar("LUPREC");
  // Without a readable value there is nothing to restore, so nothing is changed either.
  if (saved_ && !db_->SetIntVar("LUPREC", 8).ok()) saved_.reset();
}

LuprecBracket::~LuprecBracket() {
  if (db_ && saved_) (void)db_->SetIntVar("LUPREC", *saved_);
}

}  // namespace veltor::od
