// The drawing database of the embedded host: od::Database over one open drawing.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "drawing/geometry/spatial_index.h"
#include "drawing/model/document.h"
#include "drawing/session/change_listener.h"
#include "od/database.h"

namespace veltor::session {

class EmbeddedDatabase : public od::Database {
 public:
  // `listener` hears of every change made through this object; both must outlive it.
  EmbeddedDatabase(model::Document& doc, ChangeListener& listener)
      : doc_(doc), listener_(listener) {}

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
  // embedded_entity_facts.cc
  std::optional<od::Point3> InsertionPoint(od::EntityId entity) const override;
  std::optional<std::string> EffectiveBlockName(od::EntityId entity) const override;
  std::vector<od::AttributeFacts> Attributes(od::EntityId block_reference) const override;
  Status SetAttributeText(od::ObjectId attribute, const std::string& text) override;
  std::string ToAnsiCodePage(const std::string& utf8) const override;
  std::string FromAnsiCodePage(const std::string& bytes) const override;
  std::optional<od::TextFacts> Text(od::EntityId entity) const override;
  // Always nothing: the embedded host has no solid modeller.
  std::optional<double> SolidVolume(od::EntityId entity) const override;

  std::optional<int> GetIntVar(const std::string& name) const override;
  Status SetIntVar(const std::string& name, int value) override;

  Result<od::EntityId> AddPoint(const od::Point3& at) override;
  Result<od::EntityId> AddPolyline3d(const std::vector<od::Point3>& points, bool closed) override;
  Result<od::EntityId> AddLwPolyline(const std::vector<od::Point3>& points, bool closed,
                                     const od::Point3& normal) override;
  Result<od::EntityId> AddBlockReference(const std::string& block, const od::Point3& at,
                                         double scale, const std::string& layer) override;
  // embedded_marks.cc
  Result<od::ObjectId> AddLayer(const std::string& name, long true_color) override;
  bool HasBlock(const std::string& name) const override;
  Status AddCircleBlock(const std::string& name, const od::Point3& center, double radius) override;
  std::optional<od::EntityProperties> Properties(od::EntityId entity) const override;
  Status CopyProperties(od::EntityId from, od::EntityId to) override;
  Status CopyGraphicProperties(od::EntityId from, od::EntityId to) override;
  Status Erase(od::EntityId entity) override;
  // embedded_break.cc
  Result<od::EntityList> BreakCurve(od::EntityId entity, const od::Point3& first,
                                    const od::Point3& second) override;
  Status CopyExtensionData(od::EntityId from, od::EntityId to) override;

  Result<std::unique_ptr<od::WriteLock>> LockForWrite() override;
  bool locked() const { return lock_count_ > 0; }

  model::Document& document() { return doc_; }

 private:
  // Layer ids by lower-cased name, rebuilt when the drawing changed.
  const std::unordered_map<std::string, od::ObjectId>& LayerIds() const;
  model::RecordId Record(od::ObjectId id) const;
  od::EntityId Added(model::RecordId record);

  model::Document& doc_;
  ChangeListener& listener_;
  mutable std::unordered_map<std::string, od::ObjectId> layer_ids_;
  mutable uint64_t layer_ids_generation_ = ~uint64_t{0};
  // Layer ids by the exact text entities hold (few distinct texts, looked up per entity).
  mutable std::vector<std::pair<std::string, od::ObjectId>> raw_layer_ids_;
  mutable std::unique_ptr<geom::SpatialIndex> index_;
  mutable uint64_t index_generation_ = ~uint64_t{0};
  int lock_count_ = 0;
  friend class EmbeddedWriteLock;
};

}  // namespace veltor::session
