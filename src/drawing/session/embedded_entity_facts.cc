// Facts of single entities that commands read: block insertion points, texts, solid volumes.
#include "drawing/geometry/ocs.h"
#include "drawing/model/entity_geometry_tags.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/mtext_plain.h"

namespace veltor::session {

namespace {

od::Point3 ToPoint(const geom::Vec3& v) { return {v.x, v.y, v.z}; }

// An OCS point of an entity with the extrusion `normal`, in world coordinates.
geom::Vec3 ToWorld(const geom::Vec3& ocs, const geom::Vec3& normal) {
  return geom::IsWorldNormal(normal) ? ocs : geom::OcsToWcs(normal).Apply(ocs);
}

}  // namespace

std::optional<od::Point3> EmbeddedDatabase::InsertionPoint(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord || doc_.TypeOf(record) != "INSERT") return std::nullopt;
  model::RecordTags t(doc_, record);
  return ToPoint(ToWorld(t.Point(10), t.Normal()));
}

std::optional<od::TextFacts> EmbeddedDatabase::Text(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  const std::string& type = doc_.TypeOf(record);
  model::RecordTags t(doc_, record);
  od::TextFacts facts;
  facts.height = t.Double(40);
  if (type == "TEXT") {
    geom::Vec3 normal = t.Normal();
    geom::Vec3 position = t.Point(10);
    facts.position = ToPoint(ToWorld(position, normal));
    // Without its own second point, a text's alignment point is its position.
    facts.alignment_point = ToPoint(ToWorld(t.Point(11, position), normal));
    facts.horizontal_mode = static_cast<int>(t.Int(72));
    facts.vertical_mode = static_cast<int>(t.Int(73));
    facts.text = doc_.Decode(t.Text(1));
    return facts;
  }
  if (type == "MTEXT") {
    facts.multiline = true;
    facts.position = facts.alignment_point = ToPoint(t.Point(10));
    // The contents are the group 3 chunks followed by group 1.
    std::string raw;
    for (const model::TagView& tag : t)
      if (tag.code == 3) raw += tag.value;
    raw += t.Text(1);
    facts.text = MTextPlainText(doc_.Decode(raw));
    return facts;
  }
  return std::nullopt;
}

std::optional<double> EmbeddedDatabase::SolidVolume(od::EntityId) const { return std::nullopt; }

}  // namespace veltor::session
