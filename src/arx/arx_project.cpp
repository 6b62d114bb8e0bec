#include "arx/arx_project.h"

#include <memory>

#include "arx/alias_paths.h"
#include "arx/object_ids.h"
#include "arx/wide_text.h"
#include "od/text.h"

#include <MapAlias.h>
#include <MapDrawingSet.h>
#include <MapODContainer.h>
#include <MapObjClass.h>

namespace veltor::arx {

namespace {

AcMapODContainer* ContainerOf(AcMapProject* project) {
  AcMapODContainer* container = nullptr;
  if (!project || !project->GetODContainer(container)) return nullptr;
  return container;
}

AcMapAliases* SessionAliases() {
  AcMapSession* session = AcMapGetSession();
  AcMapAliases* aliases = nullptr;
  if (!session || !session->GetAliases(aliases)) return nullptr;
  return aliases;
}

AcMapDrawingSet* DrawingSetOf(AcMapProject* project) {
  AcMapDrawingSet* set = nullptr;
  if (!project || !project->GetDrawingSet(set)) return nullptr;
  return set;
}

// The attached drawing with id `id` (its position plus one), or nullptr.
std::unique_ptr<AcMapAttachedDrawing> DrawingAt(AcMapProject* project, int id) {
  AcMapDrawingSet* set = DrawingSetOf(project);
  AcMapAttachedDrawing* drawing = nullptr;
  if (!set || id < 1 || id > set->CountDrawings() || !set->GetDrawing(drawing, id - 1) || !drawing)
    return nullptr;
  return std::unique_ptr<AcMapAttachedDrawing>(drawing);
}

std::string DrawingError(int id, const std::string& reason) {
  return "attached drawing " + std::to_string(id) + ": " + reason;
}

}  // namespace

ArxProject::ArxProject(AcMapProject* project)
    : project_(project), container_(ContainerOf(project)) {}

std::string ArxProject::AliasPathOf(const std::string& path) const {
  return arx::AliasPathOf(path);
}

std::vector<od::DriveAlias> ArxProject::DriveAliases() const {
  std::vector<od::DriveAlias> result;
  AcMapAliases* aliases = SessionAliases();
  if (!aliases) return result;
  for (int i = 0; i < aliases->CountAliases(); ++i) {
    AcMapDriveAlias* alias = nullptr;
    if (aliases->GetAlias(alias, i) && alias)
      result.push_back({Narrow(alias->Name()), Narrow(alias->Path())});
  }
  return result;
}

Status ArxProject::AddDriveAlias(const std::string& name, const std::string& path) {
  if (name.empty()) return Status::Error("drive alias: the name is empty");
  if (path.empty()) return Status::Error("drive alias '" + name + "': the path is empty");
  AcMapAliases* aliases = SessionAliases();
  if (!aliases) return Status::Error("drive alias '" + name + "': no Map session");
  bool exists = false;
  for (const od::DriveAlias& alias : DriveAliases())
    if (od::EqualsIgnoreCase(alias.name, name)) exists = true;
  std::wstring wide_name = Widen(name), wide_path = Widen(path);
  bool done = exists ? aliases->UpdateAlias(wide_name.c_str(), wide_path.c_str())
                     : aliases->AddAlias(wide_name.c_str(), wide_path.c_str());
  return done ? Status::Ok() : Status::Error("drive alias '" + name + "': the host refused it");
}

Status ArxProject::RemoveDriveAlias(const std::string& name) {
  AcMapAliases* aliases = SessionAliases();
  if (!aliases || !aliases->DeleteAlias(Widen(name).c_str()))
    return Status::Error("drive alias '" + name + "': no such alias");
  return Status::Ok();
}

Result<int> ArxProject::AttachDrawing(const std::string& path) {
  std::optional<std::string> alias_path = ThroughAlias(path, DriveAliases());
  if (!alias_path) return Status::Error("attach '" + path + "': no drive alias reaches this path");
  AcMapDrawingSet* set = DrawingSetOf(project_);
  AcMapAttachedDrawing* drawing = nullptr;
  if (!set || !set->AttachDrawing(drawing, Widen(*alias_path).c_str()) || !drawing)
    return Status::Error("attach '" + path + "': the drawing cannot be read");
  delete drawing;  // the set keeps the attachment; this is the caller's handle on it
  return set->CountDrawings();  // attached last
}

Status ArxProject::ActivateDrawing(int id) {
  std::unique_ptr<AcMapAttachedDrawing> drawing = DrawingAt(project_, id);
  if (!drawing) return Status::Error(DrawingError(id, "no such drawing"));
  return drawing->Activate() ? Status::Ok() : Status::Error(DrawingError(id, "cannot be activated"));
}

Status ArxProject::DeactivateDrawing(int id) {
  std::unique_ptr<AcMapAttachedDrawing> drawing = DrawingAt(project_, id);
  if (!drawing) return Status::Error(DrawingError(id, "no such drawing"));
  return drawing->Deactivate() ? Status::Ok()
                               : Status::Error(DrawingError(id, "cannot be deactivated"));
}

Status ArxProject::DetachDrawing(int id) {
  std::unique_ptr<AcMapAttachedDrawing> drawing = DrawingAt(project_, id);
  if (!drawing) return Status::Error(DrawingError(id, "no such drawing"));
  AcMapDrawingSet* set = DrawingSetOf(project_);
  if (!set || !set->DetachDrawing(drawing->AliasPath()))
    return Status::Error(DrawingError(id, "cannot be detached"));
  return Status::Ok();
}

std::vector<od::AttachedDrawing> ArxProject::AttachedDrawings() const {
  std::vector<od::AttachedDrawing> drawings;
  AcMapDrawingSet* set = DrawingSetOf(project_);
  if (!set) return drawings;
  for (int id = 1; id <= set->CountDrawings(); ++id) {
    std::unique_ptr<AcMapAttachedDrawing> drawing = DrawingAt(project_, id);
    if (!drawing) continue;
    drawings.push_back(
        {id, Narrow(drawing->AliasPath()), drawing->ActiveStatus() == AcMap::kDwgActive});
  }
  return drawings;
}

Result<std::vector<std::string>> ArxProject::AttachedTableNames(int id) const {
  std::unique_ptr<AcMapAttachedDrawing> drawing = DrawingAt(project_, id);
  if (!drawing) return Status::Error(DrawingError(id, "no such drawing"));
  AcMapStringArray tables;
  if (!drawing->GetTableList(tables))
    return Status::Error(DrawingError(id, "its tables cannot be read"));
  std::vector<std::string> names;
  for (int i = 0; i < tables.Length(); ++i) names.push_back(Narrow(tables[i]));
  return names;
}

std::vector<std::string> ArxProject::ClassificationTags(od::EntityId entity) const {
  AcMapObjClassSystem* system = nullptr;
  Result<AcDbObjectId> id = ToAcDbId(entity);
  if (!id.ok() || !project_ || !project_->GetClassificationSystem(system) || !system) return {};
  const ACHAR* name = nullptr;
  if (system->GetClassName(*id, name) != AcMap::kOk || !name || !*name) return {};
  return {Narrow(name)};
}

Status ArxProject::Classify(od::EntityId entity, const std::string& tag) {
  Result<AcDbObjectId> id = ToAcDbId(entity);
  if (!id.ok()) return id.status().Wrap("classify");
  AcMapObjClassSystem* system = nullptr;
  if (!project_ || !project_->GetClassificationSystem(system) || !system)
    return Status::Error("classify: the drawing has no feature classification");
  if (system->Classify(*id, Widen(tag).c_str()) != AcMap::kOk)
    return Status::Error("classify: the host refused the class " + tag);
  return Status::Ok();
}

}  // namespace veltor::arx
