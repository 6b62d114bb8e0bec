#include "drawing/session/session_editor.h"

#include "drawing/dxf/record_store.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/session.h"
#include "od/text.h"

namespace veltor::session {

namespace {

constexpr char kCancelAnswer[] = "*Cancel*";

// Answers lose surrounding spaces, tabs and carriage returns (a line feed ends the line).
std::string Trim(const std::string& text) { return std::string(od::TrimBlanks(text, " \t\r")); }

}  // namespace

bool ParsePoint(const std::string& text, od::Point3& point) {
  double v[3] = {0, 0, 0};
  size_t pos = 0;
  int n = 0;
  for (; n < 3; ++n) {
    if (!od::ScanDouble(text, &pos, &v[n])) return false;
    if (pos < text.size() && text[pos] == ',') {
      ++pos;
      continue;
    }
    ++n;
    break;
  }
  if (n < 2) return false;
  while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
  if (pos != text.size()) return false;
  point = {v[0], v[1], v[2]};
  return true;
}

void SessionEditor::Print(std::string_view text) { session_.Print(text); }

bool SessionEditor::TakePending(bool allow_spaces, std::string& answer) {
  if (pending_.empty()) return false;
  size_t end = allow_spaces ? pending_.find('\n') : pending_.find_first_of(" \n");
  if (end == std::string::npos) {
    answer = pending_;
    pending_.clear();
  } else {
    answer = pending_.substr(0, end);
    pending_.erase(0, end + 1);
  }
  return true;
}

od::PromptStatus SessionEditor::ReadAnswer(const std::string& prompt, bool allow_spaces,
                                           std::string& answer) {
  od::PromptStatus status = ReadAnswerOnce(prompt, allow_spaces, answer);
  if (status == od::PromptStatus::kCancel && session_.command_running()) cancelled_ = true;
  return status;
}

od::PromptStatus SessionEditor::ReadAnswerOnce(const std::string& prompt, bool allow_spaces,
                                               std::string& answer) {
  for (;;) {
    if (session_.TakeCancelRequest()) return od::PromptStatus::kCancel;
    if (TakePending(allow_spaces, answer)) {
      Print(prompt + answer + "\n");
    } else {
      InputSource* input = session_.input();
      if (!input) return od::PromptStatus::kCancel;
      InputLine line = input->ReadLine(prompt);
      if (line.kind == InputLine::Kind::kEnd) {
        // Input that ends inside a command cancels it, and the transcript says so, once. (A
        // person at a terminal has seen the prompt already.)
        if (!input_ended_ && session_.command_running() && !input->failed())
          Print(session_.interactive() ? "*Cancel*\n" : prompt + "*Cancel*\n");
        input_ended_ = true;
      }
      if (line.kind != InputLine::Kind::kLine) return od::PromptStatus::kCancel;
      // A line answers one prompt; without spaces allowed, its rest answers the next ones.
      pending_ = line.text + "\n" + pending_;
      TakePending(allow_spaces, answer);
    }
    if (!answer.empty() && answer.back() == '\r') answer.pop_back();
    if (answer == kCancelAnswer) {
      Print("*Cancel*\n");
      return od::PromptStatus::kCancel;
    }
    if (answer.size() > 1 && answer[0] == '\'') {
      session_.RunTransparent(answer.substr(1));
      if (!session_.input() || (session_.input()->failed())) return od::PromptStatus::kCancel;
      Print("Resuming command.\n");
      continue;
    }
    return answer.empty() ? od::PromptStatus::kNone : od::PromptStatus::kOk;
  }
}

bool SessionEditor::Refuse(const std::string& message) {
  Print(message + "\n");
  pending_.clear();
  InputSource* input = session_.input();
  if (!input) return false;
  input->Rejected(message);
  return !input->failed();
}

od::PromptResult<std::string> SessionEditor::GetString(const std::string& prompt,
                                                       bool allow_spaces) {
  od::PromptResult<std::string> result;
  result.status = ReadAnswer(prompt, allow_spaces, result.value);
  if (result.status == od::PromptStatus::kNone) result.status = od::PromptStatus::kOk;
  return result;
}

od::PromptResult<int> SessionEditor::GetInt(const std::string& prompt) {
  od::PromptResult<int> result;
  for (;;) {
    std::string answer;
    result.status = ReadAnswer(prompt, false, answer);
    if (result.status != od::PromptStatus::kOk) return result;
    char* end = nullptr;
    long value = std::strtol(answer.c_str(), &end, 10);
    if (end && *end == '\0' && value >= INT32_MIN && value <= INT32_MAX) {
      result.value = static_cast<int>(value);
      return result;
    }
    if (!Refuse("Requires an integer value.")) {
      result.status = od::PromptStatus::kCancel;
      return result;
    }
  }
}

od::PromptResult<od::Point3> SessionEditor::GetPoint(const std::string& asked) {
  // A point prompt without text of its own reads as the CAD host's.
  const std::string prompt = asked.empty() ? "Specify point: " : asked;
  od::PromptResult<od::Point3> result;
  for (;;) {
    std::string answer;
    result.status = ReadAnswer(prompt, false, answer);
    if (result.status != od::PromptStatus::kOk) return result;
    if (ParsePoint(answer, result.value)) return result;
    if (!Refuse("Invalid point.")) {
      result.status = od::PromptStatus::kCancel;
      return result;
    }
  }
}

od::PromptResult<od::EntityId> SessionEditor::GetEntity(const std::string& prompt) {
  od::PromptResult<od::EntityId> result;
  SessionDocument* doc = session_.active();
  for (;;) {
    std::string answer;
    result.status = ReadAnswer(prompt, false, answer);
    if (result.status != od::PromptStatus::kOk) return result;
    if (doc) {
      answer = Trim(answer);
      od::EntityId id = od::kNullId;
      if (od::EqualsIgnoreCase(answer, "L")) {
        id = doc->database.LastEntity();
      } else {
        dxf::Handle handle = 0;
        if (dxf::ParseHandle(answer, handle) && doc->database.CanOpen(handle) &&
            !doc->database.EntityType(handle).empty())
          id = handle;
      }
      if (id != od::kNullId && InCurrentSpace(*doc, id)) {
        result.value = id;
        return result;
      }
    }
    if (!Refuse("*Invalid selection*\nExpects an entity handle or Last")) {
      result.status = od::PromptStatus::kCancel;
      return result;
    }
  }
}

od::EntityList SessionEditor::ImpliedSelection() {
  SessionDocument* doc = session_.active();
  if (!doc) return {};
  od::EntityList live;
  for (od::EntityId id : doc->pickfirst)
    if (doc->database.CanOpen(id)) live.push_back(id);
  return live;
}

void SessionEditor::SetPickfirst(const od::EntityList& entities) {
  SessionDocument* doc = session_.active();
  if (!doc) return;
  if (doc->pickfirst.empty() && entities.empty()) return;
  doc->pickfirst = entities;
  if (!entities.empty()) doc->previous = entities;
  session_.NotifyPickfirstModified();
}

void SessionEditor::PostCommand(const std::string& text) {
  std::string command = Trim(text);
  if (od::EqualsIgnoreCase(command, "CANCELCMD")) {
    session_.RequestCancel();
    return;
  }
  session_.queue().push_back(text);
}

void SessionEditor::SendStringToExecute(const std::string& text) { session_.queue().push_back(text); }

void SessionEditor::StartProgress(const std::string& label, int maximum) {
  (void)label;
  progress_max_ = maximum;
}

void SessionEditor::SetProgress(int position) { (void)position; }

void SessionEditor::EndProgress() { progress_max_ = 0; }

}  // namespace veltor::session
