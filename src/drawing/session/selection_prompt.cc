// The object selection prompt of the embedded host ("Select objects: ").
//
// Accepted answers: entity handles, ALL (all but frozen layers), W (window: entities whose
// extents lie inside), C (crossing: entities whose extents meet the window; both leave out
// frozen and off layers), P (previous selection), L (last
// entity), R and A (switch between removing and adding), Enter to finish. A selection holds
// each entity once.
#include <algorithm>
#include <unordered_set>

#include "drawing/dxf/record_store.h"
#include "drawing/model/entity.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/session.h"
#include "od/format.h"
#include "od/text.h"

namespace veltor::session {

namespace {

// A leading "_" asks for the keyword by its global (English) name, as scripts and queued
// command strings write it ("_P").
bool Is(const std::string& answer, const char* keyword) {
  std::string_view typed = answer;
  if (!typed.empty() && typed.front() == '_') typed.remove_prefix(1);
  return od::EqualsIgnoreCase(typed, keyword);
}

}  // namespace

// Selections are made in model space, as in the CAD host: a handle of a paper-space entity or
// of an entity inside a block definition is not pickable there.
bool InCurrentSpace(SessionDocument& doc, od::EntityId id) {
  return model::IsModelSpaceEntity(*doc.doc, RecordOf(*doc.doc, id));
}

namespace {

}  // namespace

od::PromptResult<od::EntityList> SessionEditor::SelectObjects() {
  od::PromptResult<od::EntityList> result;
  SessionDocument* doc = session_.active();
  od::EntityList selected;
  std::unordered_set<od::EntityId> members;
  bool removing = false;

  auto apply = [&](const od::EntityList& found) {
    size_t changed = 0, duplicates = 0;
    for (od::EntityId id : found) {
      if (removing) {
        if (members.erase(id)) {
          selected.erase(std::find(selected.begin(), selected.end(), id));
          ++changed;
        }
      } else if (members.insert(id).second) {
        selected.push_back(id);
        ++changed;
      } else {
        ++duplicates;
      }
    }
    std::string line = od::Format("%i found", static_cast<int>(found.size()));
    if (removing) line += od::Format(", %i removed", static_cast<int>(changed));
    else if (duplicates) line += od::Format(" (%i duplicate)", static_cast<int>(duplicates));
    if (selected.size() != found.size() || removing)
      line += od::Format(", %i total", static_cast<int>(selected.size()));
    Print(line + "\n");
  };

  auto window = [&](bool crossing) -> bool {
    od::PromptResult<od::Point3> a = GetPoint("Specify first corner: ");
    if (a.status != od::PromptStatus::kOk) return false;
    od::PromptResult<od::Point3> b = GetPoint("Specify opposite corner: ");
    if (b.status != od::PromptStatus::kOk) return false;
    od::Box3 box{{std::min(a.value.x, b.value.x), std::min(a.value.y, b.value.y), -1e300},
                 {std::max(a.value.x, b.value.x), std::max(a.value.y, b.value.y), 1e300}};
    // What cannot be seen cannot be picked: entities on frozen or off layers are left out.
    std::unordered_set<od::ObjectId> invisible;
    for (const od::LayerInfo& layer : doc->database.Layers())
      if (layer.frozen || layer.off) invisible.insert(layer.id);
    od::EntityList found;
    for (od::EntityId id : doc->database.EntitiesInBox(box)) {
      if (invisible.count(doc->database.LayerOf(id))) continue;
      if (!crossing) {
        auto e = doc->database.GeomExtents(id);
        if (!e || e->min.x < box.min.x || e->min.y < box.min.y || e->max.x > box.max.x ||
            e->max.y > box.max.y)
          continue;
      }
      found.push_back(id);
    }
    // The index answers in its own order; a selection lists entities in drawing order.
    od::EntityList ordered;
    std::unordered_set<od::EntityId> in(found.begin(), found.end());
    for (od::EntityId id : doc->database.ModelSpaceEntities())
      if (in.count(id)) ordered.push_back(id);
    apply(ordered);
    return true;
  };

  for (;;) {
    std::string answer;
    od::PromptStatus status =
        ReadAnswer(removing ? "Remove objects: " : "Select objects: ", false, answer);
    if (status == od::PromptStatus::kCancel) {
      result.status = od::PromptStatus::kCancel;
      return result;
    }
    if (status == od::PromptStatus::kNone) break;
    if (!doc) {
      if (!Refuse("No drawing is open.")) return result;
      continue;
    }
    dxf::Handle handle = 0;
    if (Is(answer, "ALL")) {
      od::EntityList all;
      std::unordered_set<od::ObjectId> frozen;
      for (const od::LayerInfo& layer : doc->database.Layers())
        if (layer.frozen) frozen.insert(layer.id);
      for (od::EntityId id : doc->database.ModelSpaceEntities())
        if (!frozen.count(doc->database.LayerOf(id))) all.push_back(id);
      apply(all);
    } else if (Is(answer, "W") || Is(answer, "WINDOW") || Is(answer, "C") ||
               Is(answer, "CROSSING")) {
      if (!window(Is(answer, "C") || Is(answer, "CROSSING"))) {
        result.status = od::PromptStatus::kCancel;
        return result;
      }
    } else if (Is(answer, "P") || Is(answer, "PREVIOUS")) {
      od::EntityList previous;
      for (od::EntityId id : doc->previous)
        if (doc->database.CanOpen(id)) previous.push_back(id);
      apply(previous);
    } else if (Is(answer, "L") || Is(answer, "LAST")) {
      od::EntityId last = doc->database.LastEntity();
      apply(last == od::kNullId ? od::EntityList{} : od::EntityList{last});
    } else if (Is(answer, "R") || Is(answer, "REMOVE")) {
      removing = true;
    } else if (Is(answer, "A") || Is(answer, "ADD")) {
      removing = false;
    } else if (dxf::ParseHandle(answer, handle) && InCurrentSpace(*doc, handle)) {
      apply({handle});
    } else if (!Refuse("*Invalid selection*\n"
                       "Expects an entity handle or ALL/Window/Crossing/Previous/Last/Add/Remove")) {
      return result;
    }
  }
  if (doc && !selected.empty()) doc->previous = selected;
  result.status = od::PromptStatus::kOk;
  result.value = std::move(selected);
  return result;
}

}  // namespace veltor::session
