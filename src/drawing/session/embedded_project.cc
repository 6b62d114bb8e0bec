#include "drawing/session/embedded_project.h"

#include <algorithm>

#include "drawing/model/objects.h"
#include "drawing/model/tables.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

namespace {

bool SameAliasName(const std::string& a, const std::string& b) {
  return model::EqualsNoCaseAscii(a, b);
}

}  // namespace

EmbeddedProject::EmbeddedProject(model::Document& doc, ChangeListener& listener)
    : doc_(doc), listener_(listener), container_(doc, listener) {
  container_.SetAttachedTableLookup(
      [this](const std::string& name) { return FindAttachedTable(name); });
}

std::string EmbeddedProject::AliasPathOf(const std::string& path) const {
  size_t colon = path.find(':');
  if (colon != std::string::npos) return path.substr(0, colon + 1);
  if (!path.empty() && path[0] == '/') return "/";
  return "";
}

std::vector<od::DriveAlias> EmbeddedProject::DriveAliases() const { return aliases_; }

Status EmbeddedProject::AddDriveAlias(const std::string& name, const std::string& path) {
  if (name.empty()) return Status::Error("drive alias: the name is empty");
  if (path.empty()) return Status::Error("drive alias '" + name + "': the path is empty");
  for (od::DriveAlias& alias : aliases_)
    if (SameAliasName(alias.name, name)) {
      alias.path = path;
      return Status::Ok();
    }
  aliases_.push_back({name, path});
  return Status::Ok();
}

Status EmbeddedProject::RemoveDriveAlias(const std::string& name) {
  auto it = std::find_if(aliases_.begin(), aliases_.end(),
                         [&](const od::DriveAlias& a) { return SameAliasName(a.name, name); });
  if (it == aliases_.end()) return Status::Error("drive alias '" + name + "': no such alias");
  aliases_.erase(it);
  return Status::Ok();
}

Result<int> EmbeddedProject::AttachDrawing(const std::string& path) {
  std::string alias_path = AliasPathOf(path);
  bool reachable =
      !alias_path.empty() &&
      std::any_of(aliases_.begin(), aliases_.end(),
                  [&](const od::DriveAlias& a) { return a.path == alias_path; });
  if (!reachable) return Status::Error("attach '" + path + "': no drive alias reaches this path");
  auto doc = model::Document::Open(path);
  if (!doc.ok()) return doc.status().Wrap("attach");
  Attachment attachment;
  attachment.info.id = next_attachment_id_++;
  attachment.info.path = path;
  attachment.doc = std::move(doc).value();
  attachment.store = std::make_unique<objectdata::ObjectDataStore>(*attachment.doc);
  attachments_.push_back(std::move(attachment));
  return attachments_.back().info.id;
}

EmbeddedProject::Attachment* EmbeddedProject::FindAttachment(int id) {
  for (Attachment& a : attachments_)
    if (a.info.id == id) return &a;
  return nullptr;
}

const EmbeddedProject::Attachment* EmbeddedProject::FindAttachment(int id) const {
  for (const Attachment& a : attachments_)
    if (a.info.id == id) return &a;
  return nullptr;
}

Status EmbeddedProject::ActivateDrawing(int id) {
  Attachment* a = FindAttachment(id);
  if (!a) return Status::Error("activate: no attached drawing " + std::to_string(id));
  a->info.active = true;
  return Status::Ok();
}

Status EmbeddedProject::DeactivateDrawing(int id) {
  Attachment* a = FindAttachment(id);
  if (!a) return Status::Error("deactivate: no attached drawing " + std::to_string(id));
  a->info.active = false;
  return Status::Ok();
}

Status EmbeddedProject::DetachDrawing(int id) {
  auto it = std::find_if(attachments_.begin(), attachments_.end(),
                         [&](const Attachment& a) { return a.info.id == id; });
  if (it == attachments_.end()) return Status::Error("detach: no attached drawing " + std::to_string(id));
  attachments_.erase(it);
  return Status::Ok();
}

std::vector<od::AttachedDrawing> EmbeddedProject::AttachedDrawings() const {
  std::vector<od::AttachedDrawing> out;
  for (const Attachment& a : attachments_) out.push_back(a.info);
  return out;
}

Result<std::vector<std::string>> EmbeddedProject::AttachedTableNames(int id) const {
  const Attachment* a = FindAttachment(id);
  if (!a) return Status::Error("attached drawing " + std::to_string(id) + ": not attached");
  return a->store->TableNames();
}

std::optional<od::TableDefinition> EmbeddedProject::FindAttachedTable(const std::string& name) const {
  for (const Attachment& a : attachments_) {
    if (!a.info.active) continue;
    Result<od::TableDefinition> def = a.store->GetTable(name);
    if (def.ok()) return *std::move(def);
  }
  return std::nullopt;
}

std::vector<std::string> EmbeddedProject::ClassificationTags(od::EntityId entity) const {
  std::vector<std::string> tags;
  model::RecordId record = RecordOf(doc_, entity);
  if (record == model::kNoRecord) return tags;
  model::RecordId xdict = model::ExtensionDictionary(doc_, record);
  if (xdict == model::kNoRecord) return tags;
  model::RecordId xrec = model::DictionaryLookup(doc_, xdict, kClassificationKey);
  if (xrec == model::kNoRecord) return tags;
  for (const dxf::Tag& t : model::XRecordData(doc_, xrec))
    if (t.code == 1) tags.push_back(doc_.Decode(t.value));
  return tags;
}

Status EmbeddedProject::Classify(od::EntityId entity, const std::string& tag) {
  model::RecordId record = RecordOf(doc_, entity);
  if (record == model::kNoRecord) return Status::Error("classify: the entity cannot be opened");
  if (!doc_.AtLeast("AC1015"))
    return Status::Error("classify: classification needs a drawing of R2000 (AC1015) or later");
  model::RecordId xdict = model::EnsureExtensionDictionary(doc_, record);
  dxf::Tags data{{1, doc_.Encode(tag)}};
  model::RecordId xrec = model::DictionaryLookup(doc_, xdict, kClassificationKey);
  if (xrec == model::kNoRecord) {
    xrec = model::AddXRecord(doc_, doc_.store().at(xdict).handle, data);
    model::SetDictionaryEntry(doc_, xdict, kClassificationKey, doc_.store().at(xrec).handle);
  } else {
    model::SetXRecordData(doc_, xrec, data);
  }
  listener_.Modified(entity);
  return Status::Ok();
}

}  // namespace veltor::session
