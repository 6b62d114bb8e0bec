// BREAK: the host's own command that breaks a curve between two points.
#include "drawing/model/break_entity.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/session_document.h"
#include "od/format.h"

namespace veltor::session {

namespace {

bool OnLockedLayer(const od::Database& db, od::EntityId entity) {
  const od::ObjectId layer = db.LayerOf(entity);
  for (const od::LayerInfo& info : db.Layers())
    if (info.id == layer) return info.locked;
  return false;
}

// Asks for the object until one that can be broken is given; kNullId when cancelled or
// refused in a script.
od::EntityId AskCurve(Session& s, SessionDocument& doc) {
  for (;;) {
    od::PromptResult<od::EntityId> picked = s.Ed().GetEntity("Select object: ");
    if (picked.status != od::PromptStatus::kOk) return od::kNullId;
    model::RecordId record = RecordOf(*doc.doc, picked.value);
    std::string refusal;
    if (record == model::kNoRecord || !model::CanBreak(*doc.doc, record)) {
      std::string type = doc.database.EntityType(picked.value);
      if (type == "POLYLINE") type = "2D POLYLINE or mesh";
      refusal = "Cannot break this object (" + type +
                "): lines, arcs, circles, lightweight polylines, 3D polylines and splines can be "
                "broken.";
    } else if (OnLockedLayer(doc.database, picked.value)) {
      refusal = "The object is on a locked layer.";
    } else {
      return picked.value;
    }
    if (!s.editor().Refuse(refusal)) return od::kNullId;
  }
}

void Break(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  od::EntityId entity = AskCurve(s, *doc);
  if (entity == od::kNullId) return;
  od::PromptResult<od::Point3> first = s.Ed().GetPoint("Specify first break point: ");
  if (first.status != od::PromptStatus::kOk) return;
  od::PromptResult<od::Point3> second = s.Ed().GetPoint("Specify second break point <same point>: ");
  if (second.status == od::PromptStatus::kCancel) return;
  // Enter breaks at the first point without a gap.
  const od::Point3 end = second.status == od::PromptStatus::kOk ? second.value : first.value;
  Result<od::EntityList> pieces = doc->database.BreakCurve(entity, first.value, end);
  if (!pieces.ok()) return (void)s.editor().Refuse("Error: " + pieces.message());
  const int count = static_cast<int>(pieces->size());
  s.Print(od::Format(count == 1 ? "Broken: %i piece.\n" : "Broken: %i pieces.\n", count));
}

}  // namespace

void RegisterEditCommands(Session& s) {
  AddHostCommand(s, "BREAK", od::kCmdModal, "Breaks a line, arc, circle, polyline or spline between two points",
                 [&s] { Break(s); });
}

}  // namespace veltor::session
