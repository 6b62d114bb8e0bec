// LIST (an object's properties and Object Data), LAYER (layer states) and HELP.
#include "drawing/model/tables.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/od_answers.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/text.h"

namespace veltor::session {

namespace {

std::string PointText(const od::Point3& p) { return od::Format("(%.4f, %.4f, %.4f)", p.x, p.y, p.z); }

// `text` followed by blanks up to `width` characters, counted as characters, not bytes, so
// that names in Cyrillic or Greek line up with Latin ones.
std::string PadRight(const std::string& text, size_t width) {
  size_t characters = 0;
  for (unsigned char byte : text)
    if ((byte & 0xC0) != 0x80) ++characters;
  return characters >= width ? text : text + std::string(width - characters, ' ');
}

std::string ColorText(int aci) {
  if (aci == 256) return "BYLAYER";
  if (aci == 0) return "BYBLOCK";
  return std::to_string(aci);
}

void ListEntity(Session& s, SessionDocument& doc, od::EntityId id) {
  od::Database& db = doc.database;
  auto props = db.Properties(id);
  s.Print(od::Format("%s Layer: \"%s\"  Handle = %s\n", PadRight(db.EntityType(id), 12).c_str(),
                     props ? props->layer.c_str() : "", dxf::FormatHandle(id).c_str()));
  if (props)
    s.Print(od::Format("             Color: %s  Linetype: %s\n", ColorText(props->color).c_str(),
                       props->linetype.c_str()));
  if (auto box = db.GeomExtents(id))
    s.Print("             Extents: " + PointText(box->min) + " - " + PointText(box->max) + "\n");
  if (auto length = db.Length(id)) s.Print(od::Format("             Length: %.4f\n", *length));
  if (auto area = db.Area(id)) s.Print(od::Format("             Area: %.4f\n", *area));
  for (const std::string& tag : doc.project.ClassificationTags(id))
    s.Print("             Feature class: " + tag + "\n");
  od::ObjectDataContainer& c = doc.project.Container();
  std::vector<od::Record> records = c.Records(id);
  for (size_t i = 0; i < records.size(); ++i) {
    s.Print(od::Format("  Object Data %i: %s\n", static_cast<int>(i + 1), records[i].table.c_str()));
    Result<od::TableDefinition> def = c.GetTable(records[i].table);
    for (size_t k = 0; k < records[i].values.size(); ++k) {
      std::string column = def.ok() && k < def->columns.size() ? def->columns[k].name : "?";
      s.Print(od::Format("    %s %s\n", PadRight(column, 20).c_str(), od::ValueToText(records[i].values[k]).c_str()));
    }
  }
  if (size_t skipped = c.DamagedRecordCount(id); skipped > 0) s.Print("  " + SkippedRecordsWarning(skipped));
}

void List(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  od::EntityList entities = s.Ed().ImpliedSelection();
  if (entities.empty()) {
    od::PromptResult<od::EntityList> picked = s.Ed().SelectObjects();
    if (picked.status != od::PromptStatus::kOk) return;
    entities = picked.value;
  }
  for (od::EntityId id : entities) ListEntity(s, *doc, id);
}

void Layer(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  model::Document& drawing = *doc->doc;
  std::string o;
  std::function<void(dxf::RecordId)> apply;
  bool list = false;
  auto choose = [&](const std::string& answer) {
    o = answer;
    apply = nullptr;
    list = o == "?";
    if (list || o.empty()) return true;
    if (od::MatchesKeyword(o, "freeze")) apply = [&](dxf::RecordId l) { model::SetLayerFrozen(drawing, l, true); };
    else if (od::MatchesKeyword(o, "thaw")) apply = [&](dxf::RecordId l) { model::SetLayerFrozen(drawing, l, false); };
    else if (od::MatchesKeyword(o, "lock")) apply = [&](dxf::RecordId l) { model::SetLayerLocked(drawing, l, true); };
    else if (od::MatchesKeyword(o, "unlock")) apply = [&](dxf::RecordId l) { model::SetLayerLocked(drawing, l, false); };
    else if (od::EqualsIgnoreCase(o, "on")) apply = [&](dxf::RecordId l) { model::SetLayerOff(drawing, l, false); };
    else if (od::MatchesKeyword(o, "off") && o.size() >= 2) apply = [&](dxf::RecordId l) { model::SetLayerOff(drawing, l, true); };
    else if (od::MatchesKeyword(o, "hide")) apply = [&](dxf::RecordId l) { model::SetLayerHidden(drawing, l, true); };
    else if (od::MatchesKeyword(o, "show")) apply = [&](dxf::RecordId l) { model::SetLayerHidden(drawing, l, false); };
    return apply != nullptr;
  };
  if (!AskUntilAccepted(s, "Enter an option [?/Freeze/Thaw/Lock/Unlock/ON/OFf/Hide/Show]: ", false,
                        "Requires ?, Freeze, Thaw, Lock, Unlock, ON, OFf, Hide or Show.", choose) ||
      o.empty())
    return;
  if (list) {
    for (const model::LayerInfo& layer : model::Layers(drawing))
      s.Print(od::Format("  %s %s%s%s%s\n", PadRight(layer.name, 24).c_str(), layer.frozen ? " frozen" : "",
                         layer.locked ? " locked" : "", layer.off ? " off" : "",
                         layer.hidden ? " hidden" : ""));
    return;
  }
  od::PromptResult<std::string> names = s.Ed().GetString("Layer name (* for all): ", true);
  if (names.status != od::PromptStatus::kOk || names.value.empty()) return;
  int changed = 0;
  for (const model::LayerInfo& layer : model::Layers(drawing)) {
    if (names.value != "*" && !od::EqualsIgnoreCase(layer.name, names.value)) continue;
    apply(layer.id);
    ++changed;
  }
  if (changed == 0) return (void)s.editor().Refuse("Error: no layer named '" + names.value + "'.");
  s.Print(od::Format(changed == 1 ? "%i layer changed.\n" : "%i layers changed.\n", changed));
}

std::string FlagsText(int flags) {
  if (flags == od::kCmdModal) return "modal";
  std::string text;
  auto add = [&](int bit, const char* name) {
    if (!(flags & bit)) return;
    if (!text.empty()) text += "|";
    text += name;
  };
  add(od::kCmdTransparent, "transparent");
  add(od::kCmdUsePickSet, "pickset");
  add(od::kCmdRedraw, "redraw");
  add(od::kCmdSession, "session");
  return text;
}

void Help(Session& s) {
  od::PromptResult<std::string> name = s.Ed().GetString("Command name or Enter for all: ", false);
  if (name.status == od::PromptStatus::kCancel) return;
  if (!name.value.empty()) {
    const od::CommandInfo* command = s.FindCommand(name.value);
    if (!command) return (void)s.editor().Refuse("Unknown command \"" + name.value + "\".");
    s.Print(od::Format("%s (group %s, flags %i: %s)\n", command->global_name.c_str(),
                       command->group.c_str(), command->flags, FlagsText(command->flags).c_str()));
    if (command->local_name != command->global_name)
      s.Print("  local name: " + command->local_name + "\n");
    if (!command->summary.empty()) s.Print("  " + command->summary + "\n");
    return;
  }
  std::string group;
  for (const od::CommandInfo& c : s.Commands()) {
    if (c.group != group) {
      group = c.group;
      s.Print("Group " + group + ":\n");
    }
    s.Print(od::Format("  %s %s %s\n", PadRight(c.global_name, 28).c_str(), PadRight(FlagsText(c.flags), 26).c_str(),
                       c.summary.c_str()));
  }
}

}  // namespace

void RegisterInfoCommands(Session& s) {
  AddHostCommand(s, "LIST", od::kCmdUsePickSet, "Shows objects' properties and their Object Data",
                 [&s] { List(s); });
  AddHostCommand(s, "LAYER", od::kCmdTransparent, "Lists layers and changes their states",
                 [&s] { Layer(s); });
  AddHostCommand(s, "HELP", od::kCmdTransparent, "Lists the commands, or tells what one does",
                 [&s] { Help(s); });
}

}  // namespace veltor::session
