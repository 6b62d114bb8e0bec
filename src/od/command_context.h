// What every module command runs inside: one undo group, no escaping exception, and the
// pieces editing commands ask for (the LUPREC bracket, the document lock, cancel).
//
// RunCommand is the only way the module runs a handler. It opens an undo group on the active
// drawing, calls the handler with a CommandContext and then closes the group - or, when the
// handler marked the command cancelled or threw, takes back everything the command changed.
// An exception never leaves RunCommand: it is reported as "Error: NAME failed: WHAT\n".
//
// Undo groups do not nest. Inside a group the host already opened (the embedded session opens
// one for every typed command) the command's changes join that group, and taking back takes
// back the whole group: for a transparent command run inside another command's prompt, that
// is the interrupted command's changes too.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "od/host.h"

namespace veltor::od {

class CommandContext {
 public:
  CommandContext(Host& host, std::string name) : host_(host), name_(std::move(name)) {}
  CommandContext(const CommandContext&) = delete;
  CommandContext& operator=(const CommandContext&) = delete;

  Host& host() { return host_; }
  const std::string& name() const { return name_; }

  // Marks the command cancelled (a cancelled dialog or prompt): when it ends, the drawing is
  // left as it was before the command, whatever the command changed before cancelling.
  void Cancel() { cancelled_ = true; }
  bool cancelled() const { return cancelled_; }

  // Locks the active drawing for writing until the command ends. Fails without a drawing or
  // when another holder has it locked; locking twice keeps the first lock.
  [[nodiscard]] Status LockForWrite();
  bool locked() const { return lock_ != nullptr; }

 private:
  Host& host_;
  std::string name_;
  bool cancelled_ = false;
  std::unique_ptr<WriteLock> lock_;
};

// Runs `handler` as the command `name` (see the file comment). Returns false when the command
// was cancelled or failed and its changes were taken back.
bool RunCommand(Host& host, const std::string& name,
                const std::function<void(CommandContext&)>& handler);

// Sets LUPREC to 8 for the life of the object and restores the saved value when it ends,
// also when the scope is left by an exception. Without a drawing, or when the variable cannot
// be read, it does nothing.
class LuprecBracket {
 public:
  explicit LuprecBracket(Host& host);
  ~LuprecBracket();
  LuprecBracket(const LuprecBracket&) = delete;
  LuprecBracket& operator=(const LuprecBracket&) = delete;

 private:
  Database* db_ = nullptr;
  std::optional<int> saved_;
};

}  // namespace veltor::od
