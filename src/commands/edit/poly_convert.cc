#include "commands/edit/poly_convert.h"

#include <string>

#include "commands/edit/poly_plane.h"

namespace veltor::commands {

namespace {

bool IsFlattenedCurve(const std::string& type) {
  return type == "ARC" || type == "CIRCLE" || type == "ELLIPSE" || type == "SPLINE";
}

// Removes a polyline made for a conversion that could not be finished.
std::optional<od::EntityId> Discard(od::Database& db, od::EntityId made) {
  (void)db.Erase(made);
  return std::nullopt;
}

// Records that cannot be read cannot be copied: erasing their entity would lose them.
bool HasDamagedRecords(od::Project* project, od::EntityId entity) {
  return project && project->Container().DamagedRecordCount(entity) > 0;
}

}  // namespace

std::optional<od::VertexList> Polyline3dVertices(const od::Database& db, od::EntityId entity,
                                                 int precision) {
  const std::string type = db.EntityType(entity);
  if (type == "LINE" || type == "LWPOLYLINE") return db.Vertices(entity);
  if (precision >= 1 && IsFlattenedCurve(type)) return db.Flatten(entity, precision);
  return std::nullopt;
}

std::optional<od::VertexList> LwPolylineVertices(const od::Database& db, od::EntityId entity,
                                                 int precision) {
  const std::string type = db.EntityType(entity);
  if (type == "POLYLINE" && db.EntityClass(entity) == "AcDb3dPolyline")
    return db.Vertices(entity);
  if (IsFlattenedCurve(type)) return db.Flatten(entity, precision < 1 ? 1 : precision);
  return std::nullopt;
}

Status CarryOver(od::Database& db, od::Project* project, od::EntityId source,
                 od::EntityId result) {
  // The graphic copy reaches sub-entities (vertices); the full copy adds the rest.
  if (Status s = db.CopyGraphicProperties(source, result); !s.ok()) return s;
  if (Status s = db.CopyProperties(source, result); !s.ok()) return s;
  if (!project) return Status::Ok();
  for (const std::string& tag : project->ClassificationTags(source))
    if (Status s = project->Classify(result, tag); !s.ok()) return s;
  od::ObjectDataContainer& container = project->Container();
  for (const od::Record& record : container.Records(source))
    if (Status s = container.AddRecord(result, record); !s.ok()) return s;
  return Status::Ok();
}

std::optional<od::EntityId> ConvertTo3dPolyline(od::Database& db, od::Project* project,
                                                od::EntityId entity, int precision) {
  if (HasDamagedRecords(project, entity)) return std::nullopt;
  std::optional<od::VertexList> vertices = Polyline3dVertices(db, entity, precision);
  if (!vertices) return std::nullopt;
  Result<od::EntityId> made = db.AddPolyline3d(vertices->points, vertices->closed);
  if (!made.ok()) return std::nullopt;
  if (!CarryOver(db, project, entity, *made).ok()) return Discard(db, *made);
  return *made;
}

std::optional<od::EntityId> ConvertToLwPolyline(od::Database& db, od::Project* project,
                                                od::EntityId entity, int precision) {
  if (HasDamagedRecords(project, entity)) return std::nullopt;
  std::optional<od::VertexList> vertices = LwPolylineVertices(db, entity, precision);
  if (!vertices) return std::nullopt;
  PolylinePlane plane = ChoosePlane(vertices->points);
  Result<od::EntityId> made = db.AddLwPolyline(plane.points, vertices->closed, plane.normal);
  if (!made.ok()) return std::nullopt;
  if (!CarryOver(db, project, entity, *made).ok()) return Discard(db, *made);
  return *made;
}

}  // namespace veltor::commands
