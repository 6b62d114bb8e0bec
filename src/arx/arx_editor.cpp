#include "arx/arx_editor.h"

#include <algorithm>

#include "arx/arx_database.h"
#include "arx/object_ids.h"
#include "arx/post_command.h"
#include "arx/wide_text.h"
#include "od/text.h"

#include <acdocman.h>
#include <adslib.h>
#include <dbapserv.h>

namespace veltor::arx {

namespace {

// The longest answer acedGetString returns, with its terminator.
constexpr size_t kAnswerCapacity = 2049;
// Output is printed in pieces of at most this many wide characters, well under the host's
// line buffer.
constexpr size_t kPrintPiece = 1024;

od::PromptStatus StatusOf(int rc) {
  if (rc == RTNORM) return od::PromptStatus::kOk;
  if (rc == RTNONE) return od::PromptStatus::kNone;
  return od::PromptStatus::kCancel;
}

// The entities of a selection set in selection order.
od::EntityList EntitiesOf(const ads_name ss) {
  od::EntityList entities;
  Adesk::Int32 length = 0;
  if (acedSSLength(ss, &length) != RTNORM) return entities;
  for (Adesk::Int32 i = 0; i < length; ++i) {
    ads_name name;
    AcDbObjectId id;
    if (acedSSName(ss, i, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk)
      if (od::EntityId e = ToOdId(id)) entities.push_back(e);
  }
  return entities;
}

// acedInitGet's flag that lets a prompt accept any text (answered with RTKWORD).
constexpr int kArbitraryInput = 128;

// The last entity of the working drawing's model space, or kNullId.
od::EntityId LastEntity() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  AcDbDatabase* db = services ? services->workingDatabase() : nullptr;
  return db ? ArxDatabase(db).LastEntity() : od::kNullId;
}

// The entity of the working drawing whose handle is `text` (hexadecimal), or kNullId.
od::EntityId EntityByHandle(const std::string& text) {
  uint64_t value = 0;
  if (text.empty() || text.size() > 16) return od::kNullId;
  for (char c : text) {
    int digit = c >= '0' && c <= '9'   ? c - '0'
                : c >= 'A' && c <= 'F' ? c - 'A' + 10
                : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                       : -1;
    if (digit < 0) return od::kNullId;
    value = value * 16 + static_cast<uint64_t>(digit);
  }
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  AcDbDatabase* db = services ? services->workingDatabase() : nullptr;
  AcDbObjectId id;
  AcDbHandle handle(static_cast<Adesk::UInt32>(value & 0xFFFFFFFFu),
                    static_cast<Adesk::UInt32>(value >> 32));
  if (!db || db->getAcDbObjectId(id, false, handle) != Acad::eOk || id.isErased())
    return od::kNullId;
  return ToOdId(id);
}

}  // namespace

void ArxEditor::Print(std::string_view text) {
  std::wstring wide = Widen(text);
  for (size_t at = 0; at < wide.size();) {
    size_t n = std::min(kPrintPiece, wide.size() - at);
    // Keep a surrogate pair in one piece.
    if (at + n < wide.size() && wide[at + n - 1] >= 0xD800 && wide[at + n - 1] <= 0xDBFF) --n;
    std::wstring piece = wide.substr(at, n);
    acutPrintf(L"%ls", piece.c_str());  // the text is an argument, never the format
    at += n;
  }
}

od::PromptResult<std::string> ArxEditor::GetString(const std::string& prompt, bool allow_spaces) {
  ACHAR answer[kAnswerCapacity] = {};
  int rc = acedGetString(allow_spaces ? 1 : 0, Widen(prompt).c_str(), answer, kAnswerCapacity);
  od::PromptResult<std::string> result;
  result.status = StatusOf(rc);
  if (result.ok()) {
    result.value = Narrow(answer);
    if (result.value.empty()) result.status = od::PromptStatus::kNone;  // Enter alone
  }
  return result;
}

od::PromptResult<int> ArxEditor::GetInt(const std::string& prompt) {
  int value = 0;
  od::PromptResult<int> result;
  result.status = StatusOf(acedGetInt(Widen(prompt).c_str(), &value));
  if (result.ok()) result.value = value;
  return result;
}

od::PromptResult<od::Point3> ArxEditor::GetPoint(const std::string& prompt) {
  ads_point point = {0, 0, 0};
  od::PromptResult<od::Point3> result;
  result.status = StatusOf(acedGetPoint(nullptr, Widen(prompt).c_str(), point));
  if (result.ok()) result.value = {point[0], point[1], point[2]};
  return result;
}

od::PromptResult<od::EntityId> ArxEditor::GetEntity(const std::string& prompt) {
  ads_name name;
  ads_point picked;
  od::PromptResult<od::EntityId> result;
  std::wstring wide_prompt = Widen(prompt);
  for (;;) {
    acedInitGet(kArbitraryInput, nullptr);  // a typed handle or "Last" names an entity
    int rc = acedEntSel(wide_prompt.c_str(), name, picked);
    if (rc == RTERROR) {  // Enter, or a pick that hit nothing
      result.status = od::PromptStatus::kNone;
      return result;
    }
    if (rc != RTKWORD) {
      result.status = StatusOf(rc);
      break;
    }
    ACHAR typed[kAnswerCapacity] = {};
    std::string handle = acedGetInput(typed, kAnswerCapacity) == RTNORM ? Narrow(typed) : "";
    od::EntityId e = od::MatchesKeyword(handle, "Last") ? LastEntity() : EntityByHandle(handle);
    if (e != od::kNullId) {
      result.status = od::PromptStatus::kOk;
      result.value = e;
      return result;
    }
    // The same answer the embedded host gives to a handle that names nothing.
    if (!Refuse("*Invalid selection*\nExpects an entity handle or Last")) return result;
  }
  AcDbObjectId id;
  if (result.ok()) {
    if (acdbGetObjectId(id, name) == Acad::eOk)
      result.value = ToOdId(id);
    else
      result.status = od::PromptStatus::kNone;
  }
  return result;
}

od::PromptResult<od::EntityList> ArxEditor::SelectObjects() {
  ads_name ss;
  int rc = acedSSGet(nullptr, nullptr, nullptr, nullptr, ss);
  od::PromptResult<od::EntityList> result;
  if (rc == RTCAN) return result;  // kCancel
  result.status = od::PromptStatus::kOk;
  if (rc == RTNORM) {
    result.value = EntitiesOf(ss);
    acedSSFree(ss);
  }
  return result;  // RTERROR: nothing was selected
}

od::EntityList ArxEditor::ImpliedSelection() {
  resbuf* grips = nullptr;
  resbuf* picked = nullptr;
  od::EntityList entities;
  if (acedSSGetFirst(&grips, &picked) != RTNORM) return entities;
  if (picked && picked->restype == RTPICKS) {
    entities = EntitiesOf(picked->resval.rlname);
    acedSSFree(picked->resval.rlname);
  }
  if (grips && grips->restype == RTPICKS) acedSSFree(grips->resval.rlname);
  if (grips) acutRelRb(grips);
  if (picked) acutRelRb(picked);
  return entities;
}

void ArxEditor::SetPickfirst(const od::EntityList& entities) {
  if (entities.empty()) {
    acedSSSetFirst(nullptr, nullptr);
    return;
  }
  ads_name ss = {0, 0};
  bool made = false;
  for (od::EntityId e : entities) {
    ads_name name;
    Result<AcDbObjectId> id = ToAcDbId(e);
    if (!id.ok() || acdbGetAdsName(name, *id) != Acad::eOk) continue;
    // The first add makes the set (a null set name), later ones add to it.
    if (!made) {
      made = acedSSAdd(name, nullptr, ss) == RTNORM;
    } else {
      acedSSAdd(name, ss, ss);
    }
  }
  if (!made) {
    acedSSSetFirst(nullptr, nullptr);
    return;
  }
  acedSSSetFirst(ss, nullptr);
  acedSSFree(ss);
}

void ArxEditor::PostCommand(const std::string& text) { acedPostCommand(Widen(text).c_str()); }

void ArxEditor::SendStringToExecute(const std::string& text) {
  AcApDocument* document = acDocManager->curDocument();
  if (document) acDocManager->sendStringToExecute(document, Widen(text).c_str(), false);
}

void ArxEditor::StartProgress(const std::string& label, int maximum) {
  acedSetStatusBarProgressMeter(Widen(label).c_str(), 0, maximum);
}

void ArxEditor::SetProgress(int position) { acedSetStatusBarProgressMeterPos(position); }

void ArxEditor::EndProgress() { acedRestoreStatusBar(); }

void ArxEditor::UpdateDisplay() { acedUpdateDisplay(); }

}  // namespace veltor::arx
