// od::Database over one host database (AcDbDatabase). Every call opens what it needs, reads or
// changes it and closes it again; ids are converted at the edge (object_ids.h), text widened
// and narrowed there (wide_text.h).
#pragma once

#include "od/database.h"

class AcDbDatabase;
class AcDbEntity;

namespace veltor::arx {

class ArxDatabase : public od::Database {
 public:
  explicit ArxDatabase(AcDbDatabase* database) : db_(database) {}
  AcDbDatabase* host_database() const { return db_; }

  od::EntityList ModelSpaceEntities() const override;
  bool CanOpen(od::EntityId entity) const override;
  od::ObjectId LayerOf(od::EntityId entity) const override;
  std::string EntityType(od::EntityId entity) const override;
  std::string EntityClass(od::EntityId entity) const override;
  std::string EntityHandle(od::EntityId entity) const override;
  od::EntityId LastEntity() const override;

  std::vector<od::LayerInfo> Layers() const override;
  od::ObjectId FindLayer(const std::string& name) const override;

  std::optional<od::Box3> GeomExtents(od::EntityId entity) const override;
  std::optional<od::VertexList> Vertices(od::EntityId entity) const override;
  std::optional<od::VertexList> Flatten(od::EntityId entity, int precision) const override;
  bool IsClosedCurve(od::EntityId entity) const override;
  std::optional<double> Length(od::EntityId entity) const override;
  std::optional<double> Area(od::EntityId entity) const override;
  od::EntityList EntitiesInBox(const od::Box3& box) const override;
  std::optional<od::Point3> InsertionPoint(od::EntityId entity) const override;
  std::optional<std::string> EffectiveBlockName(od::EntityId entity) const override;
  std::vector<od::AttributeFacts> Attributes(od::EntityId block_reference) const override;
  std::optional<od::TextFacts> Text(od::EntityId entity) const override;
  std::optional<double> SolidVolume(od::EntityId entity) const override;

  std::string ToAnsiCodePage(const std::string& utf8) const override;
  std::string FromAnsiCodePage(const std::string& bytes) const override;

  std::optional<int> GetIntVar(const std::string& name) const override;
  Status SetIntVar(const std::string& name, int value) override;

  Result<od::EntityId> AddPoint(const od::Point3& at) override;
  Result<od::EntityId> AddPolyline3d(const std::vector<od::Point3>& points, bool closed) override;
  Result<od::EntityId> AddLwPolyline(const std::vector<od::Point3>& points, bool closed,
                                     const od::Point3& normal) override;
  Result<od::EntityId> AddBlockReference(const std::string& block, const od::Point3& at,
                                         double scale, const std::string& layer) override;
  Result<od::ObjectId> AddLayer(const std::string& name, long true_color) override;
  bool HasBlock(const std::string& name) const override;
  Status AddCircleBlock(const std::string& name, const od::Point3& center, double radius) override;
  std::optional<od::EntityProperties> Properties(od::EntityId entity) const override;
  Status CopyProperties(od::EntityId from, od::EntityId to) override;
  Status CopyGraphicProperties(od::EntityId from, od::EntityId to) override;
  Status Erase(od::EntityId entity) override;
  Result<od::EntityList> BreakCurve(od::EntityId entity, const od::Point3& first,
                                    const od::Point3& second) override;
  Status CopyExtensionData(od::EntityId from, od::EntityId to) override;
  Status SetAttributeText(od::ObjectId attribute, const std::string& text) override;

  Result<std::unique_ptr<od::WriteLock>> LockForWrite() override;

 private:
  // Appends a new entity to model space and closes it; deletes it when it cannot be added.
  Result<od::EntityId> AppendToModelSpace(AcDbEntity* entity);

  AcDbDatabase* db_;
};

}  // namespace veltor::arx
