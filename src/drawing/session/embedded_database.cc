#include "drawing/session/embedded_database.h"

#include <cctype>

#include "drawing/dxf/record_store.h"
#include "drawing/geometry/ocs.h"
#include "drawing/model/blocks.h"
#include "drawing/model/create.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry.h"
#include "drawing/model/tables.h"
#include "drawing/session/object_ids.h"
#include "od/text.h"

namespace veltor::session {

namespace {

std::string LowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::string UpperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

od::Point3 ToPoint(const geom::Vec3& v) { return {v.x, v.y, v.z}; }
geom::Vec3 ToVec(const od::Point3& p) { return {p.x, p.y, p.z}; }

std::optional<od::VertexList> ToVertexList(const std::vector<geom::Vec3>& points, bool closed) {
  od::VertexList list;
  list.closed = closed;
  list.points.reserve(points.size());
  for (const geom::Vec3& p : points) list.points.push_back(ToPoint(p));
  return list;
}

// The layer new entities go on: the drawing's current layer.
std::string CurrentLayer(const model::Document& doc) {
  auto clayer = doc.HeaderVar("$CLAYER");
  if (clayer && !clayer->empty()) return doc.Decode((*clayer)[0].value);
  return "0";
}

}  // namespace

class EmbeddedWriteLock : public od::WriteLock {
 public:
  explicit EmbeddedWriteLock(EmbeddedDatabase& db) : db_(db) { ++db_.lock_count_; }
  ~EmbeddedWriteLock() override { --db_.lock_count_; }

 private:
  EmbeddedDatabase& db_;
};

model::RecordId EmbeddedDatabase::Record(od::ObjectId id) const { return RecordOf(doc_, id); }

od::EntityList EmbeddedDatabase::ModelSpaceEntities() const {
  std::vector<model::RecordId> records = model::ModelSpaceEntities(doc_);
  od::EntityList ids;
  ids.reserve(records.size());
  for (model::RecordId r : records) ids.push_back(IdOf(doc_, r));
  return ids;
}

bool EmbeddedDatabase::CanOpen(od::EntityId entity) const {
  return Record(entity) != model::kNoRecord;
}

const std::unordered_map<std::string, od::ObjectId>& EmbeddedDatabase::LayerIds() const {
  if (layer_ids_generation_ != doc_.generation()) {
    layer_ids_.clear();
    raw_layer_ids_.clear();
    for (const model::LayerInfo& layer : model::Layers(doc_))
      layer_ids_.emplace(od::ToLowerUnicode(layer.name), IdOf(doc_, layer.id));
    layer_ids_generation_ = doc_.generation();
  }
  return layer_ids_;
}

od::ObjectId EmbeddedDatabase::LayerOf(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return od::kNullId;
  // The tags of binary records live only during ForEachTag, so their layer name is copied;
  // an ASCII record's is a view into the file's bytes, which outlive the call.
  const bool binary = doc_.store().format().binary;
  std::string copy;
  std::string_view raw;
  bool found = false;
  doc_.store().ForEachTag(record, [&](int code, std::string_view value) {
    if (code == 8) {
      if (binary) {
        copy.assign(value);
        raw = copy;
      } else {
        raw = value;
      }
      found = true;
      return false;
    }
    return true;
  });
  if (!found) return od::kNullId;
  const auto& ids = LayerIds();
  for (const auto& [text, id] : raw_layer_ids_)
    if (text == raw) return id;
  // Layer names are mostly ASCII: look up the raw text first, decode only when needed.
  auto it = ids.find(LowerAscii(raw));
  if (it == ids.end()) it = ids.find(od::ToLowerUnicode(doc_.Decode(raw)));
  od::ObjectId id = it == ids.end() ? od::kNullId : it->second;
  if (raw_layer_ids_.size() < 64) raw_layer_ids_.emplace_back(std::string(raw), id);
  return id;
}

std::string EmbeddedDatabase::EntityType(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  return record == model::kNoRecord ? std::string() : doc_.TypeOf(record);
}

std::string EmbeddedDatabase::EntityHandle(od::EntityId entity) const {
  return Record(entity) == model::kNoRecord ? std::string() : dxf::FormatHandle(entity);
}

std::string EmbeddedDatabase::EntityClass(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return "";
  const std::string& type = doc_.TypeOf(record);
  if (type == "POLYLINE") {
    long long flags = 0;
    doc_.store().ForEachTag(record, [&](int code, std::string_view value) {
      if (code == 70) {
        flags = model::ParseInt(value);
        return false;
      }
      return true;
    });
    if (flags & 8) return "AcDb3dPolyline";
    if (flags & 16) return "AcDbPolygonMesh";
    if (flags & 64) return "AcDbPolyFaceMesh";
    return "AcDb2dPolyline";
  }
  static const std::unordered_map<std::string, std::string> kClasses = {
      {"LINE", "AcDbLine"},           {"LWPOLYLINE", "AcDbPolyline"},
      {"SPLINE", "AcDbSpline"},       {"MLINE", "AcDbMline"},
      {"ARC", "AcDbArc"},             {"CIRCLE", "AcDbCircle"},
      {"ELLIPSE", "AcDbEllipse"},     {"POINT", "AcDbPoint"},
      {"TEXT", "AcDbText"},           {"MTEXT", "AcDbMText"},
      {"INSERT", "AcDbBlockReference"}, {"3DSOLID", "AcDb3dSolid"},
      {"HATCH", "AcDbHatch"},         {"REGION", "AcDbRegion"},
  };
  auto it = kClasses.find(type);
  return it == kClasses.end() ? "AcDb" + type : it->second;
}

od::EntityId EmbeddedDatabase::LastEntity() const {
  model::RecordId end = doc_.SectionEnd(model::Section::kEntities);
  if (end == model::kNoRecord) return od::kNullId;
  for (model::RecordId r = doc_.store().at(end).prev; r != model::kNoRecord;
       r = doc_.store().at(r).prev) {
    const dxf::Record& rec = doc_.store().at(r);
    if (rec.section != model::Section::kEntities) break;
    if (!rec.sub_entity && !rec.paper_space) return IdOf(doc_, r);
  }
  return od::kNullId;
}

std::vector<od::LayerInfo> EmbeddedDatabase::Layers() const {
  std::vector<od::LayerInfo> out;
  for (const model::LayerInfo& layer : model::Layers(doc_)) {
    od::LayerInfo info;
    info.id = IdOf(doc_, layer.id);
    info.name = layer.name;
    info.frozen = layer.frozen;
    info.hidden = layer.hidden;
    info.locked = layer.locked;
    info.off = layer.off;
    out.push_back(std::move(info));
  }
  return out;
}

od::ObjectId EmbeddedDatabase::FindLayer(const std::string& name) const {
  const auto& ids = LayerIds();
  // Layer names match as the host matches them: without regard to case, in any script.
  auto it = ids.find(od::ToLowerUnicode(name));
  return it == ids.end() ? od::kNullId : it->second;
}

std::optional<od::Box3> EmbeddedDatabase::GeomExtents(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  auto box = model::EntityExtents(doc_, record);
  if (!box || !box->valid()) return std::nullopt;
  return od::Box3{ToPoint(box->min()), ToPoint(box->max())};
}

std::optional<od::VertexList> EmbeddedDatabase::Vertices(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  auto list = model::EntityVertices(doc_, record);
  if (!list) return std::nullopt;
  return ToVertexList(list->points, list->closed);
}

std::optional<od::VertexList> EmbeddedDatabase::Flatten(od::EntityId entity, int precision) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  auto path = model::FlattenEntity(doc_, record, precision);
  if (!path) return std::nullopt;
  return ToVertexList(path->points, path->closed);
}

bool EmbeddedDatabase::IsClosedCurve(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  return record != model::kNoRecord && model::IsClosedCurve(doc_, record);
}

std::optional<double> EmbeddedDatabase::Length(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  return model::EntityLength(doc_, record);
}

std::optional<double> EmbeddedDatabase::Area(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  return model::EntityArea(doc_, record);
}

od::EntityList EmbeddedDatabase::EntitiesInBox(const od::Box3& box) const {
  if (!index_ || index_generation_ != doc_.generation()) {
    index_ = std::make_unique<geom::SpatialIndex>(model::BuildModelSpaceIndex(doc_));
    index_generation_ = doc_.generation();
  }
  geom::Extents window(ToVec(box.min), ToVec(box.max));
  od::EntityList ids;
  for (uint64_t record : index_->Intersecting(window)) {
    auto r = static_cast<model::RecordId>(record);
    if (!doc_.store().at(r).erased) ids.push_back(IdOf(doc_, r));
  }
  return ids;
}

std::optional<int> EmbeddedDatabase::GetIntVar(const std::string& name) const {
  std::string upper = UpperAscii(name);
  if (upper == "LUPREC") return doc_.Luprec();
  auto value = doc_.HeaderVar("$" + upper);
  if (!value || value->empty()) return std::nullopt;
  return static_cast<int>(model::ParseInt((*value)[0].value));
}

Status EmbeddedDatabase::SetIntVar(const std::string& name, int value) {
  std::string upper = UpperAscii(name);
  if (upper == "LUPREC") {
    if (value < 0 || value > 8) return Status::Error("LUPREC: value must be between 0 and 8");
    if (doc_.Luprec() == value) return Status::Ok();
    return doc_.SetLuprec(value);
  }
  auto current = doc_.HeaderVar("$" + upper);
  if (!current || current->empty()) return Status::Error(upper + ": unknown variable name");
  int code = (*current)[0].code;
  return doc_.SetHeaderVar("$" + upper, {dxf::Tag{code, std::to_string(value)}});
}

od::EntityId EmbeddedDatabase::Added(model::RecordId record) {
  od::EntityId id = IdOf(doc_, record);
  listener_.Appended(id);
  return id;
}

Result<od::EntityId> EmbeddedDatabase::AddPoint(const od::Point3& at) {
  return Added(model::AddPoint(doc_, CurrentLayer(doc_), {at.x, at.y, at.z}));
}

Result<od::EntityId> EmbeddedDatabase::AddPolyline3d(const std::vector<od::Point3>& points,
                                                     bool closed) {
  if (points.size() < 2) return Status::Error("3D polyline: needs at least two vertices");
  std::vector<model::Point3> vertices;
  for (const od::Point3& p : points) vertices.push_back({p.x, p.y, p.z});
  return Added(model::AddPolyline3d(doc_, CurrentLayer(doc_), vertices, closed));
}

Result<od::EntityId> EmbeddedDatabase::AddLwPolyline(const std::vector<od::Point3>& points,
                                                     bool closed, const od::Point3& normal) {
  if (points.size() < 2) return Status::Error("polyline: needs at least two vertices");
  if (!doc_.AtLeast("AC1012"))
    return Status::Error("polyline: lightweight polylines need a drawing of R13 or later");
  geom::Vec3 n = ToVec(normal);
  bool world = geom::IsWorldNormal(n);
  geom::Matrix3d to_ocs = geom::WcsToOcs(n);
  std::vector<geom::Vec3> ocs;
  for (const od::Point3& p : points) ocs.push_back(world ? ToVec(p) : to_ocs.Apply(ToVec(p)));
  dxf::Tags body{{100, "AcDbPolyline"},
                 {90, std::to_string(points.size())},
                 {70, closed ? "1" : "0"}};
  if (ocs[0].z != 0.0) body.push_back({38, model::FormatNumber(ocs[0].z)});
  for (const geom::Vec3& v : ocs) {
    body.push_back({10, model::FormatNumber(v.x)});
    body.push_back({20, model::FormatNumber(v.y)});
  }
  if (!world) {
    geom::Vec3 unit = n.Normalized();
    body.push_back({210, model::FormatNumber(unit.x)});
    body.push_back({220, model::FormatNumber(unit.y)});
    body.push_back({230, model::FormatNumber(unit.z)});
  }
  return Added(model::AddModelSpaceEntity(doc_, "LWPOLYLINE", CurrentLayer(doc_), std::move(body)));
}

Result<od::EntityId> EmbeddedDatabase::AddBlockReference(const std::string& block,
                                                         const od::Point3& at, double scale,
                                                         const std::string& layer) {
  if (model::FindBlockBegin(doc_, block) == model::kNoRecord)
    return Status::Error("block reference: no block named '" + block + "'");
  if (!layer.empty() && model::FindLayer(doc_, layer) == model::kNoRecord)
    model::AddLayer(doc_, layer);
  return Added(model::AddBlockReference(doc_, block, {at.x, at.y, at.z}, scale, 0.0,
                                        layer.empty() ? CurrentLayer(doc_) : layer, {}));
}

std::optional<od::EntityProperties> EmbeddedDatabase::Properties(od::EntityId entity) const {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return std::nullopt;
  model::EntityProperties p = model::ReadProperties(doc_, record);
  od::EntityProperties out;
  out.layer = p.layer;
  out.linetype = p.linetype;
  out.color = p.color;
  out.true_color = p.true_color;
  out.linetype_scale = p.linetype_scale;
  out.lineweight = p.lineweight;
  out.transparency = p.transparency;
  out.plot_style = p.plot_style_name;
  if (!p.hyperlinks.empty()) out.hyperlink = p.hyperlinks[0];
  return out;
}

Status EmbeddedDatabase::CopyProperties(od::EntityId from, od::EntityId to) {
  model::RecordId source = Record(from);
  model::RecordId target = Record(to);
  if (source == model::kNoRecord || target == model::kNoRecord)
    return Status::Error("copy properties: the entity cannot be opened");
  model::CopyProperties(doc_, source, target);
  listener_.Modified(to);
  return Status::Ok();
}

Status EmbeddedDatabase::CopyGraphicProperties(od::EntityId from, od::EntityId to) {
  model::RecordId source = Record(from);
  model::RecordId target = Record(to);
  if (source == model::kNoRecord || target == model::kNoRecord)
    return Status::Error("copy properties: the entity cannot be opened");
  model::CopyGraphicProperties(doc_, source, target);
  listener_.Modified(to);
  return Status::Ok();
}

Status EmbeddedDatabase::Erase(od::EntityId entity) {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return Status::Error("erase: the entity cannot be opened");
  model::EraseEntity(doc_, record);
  listener_.Erased(entity, true);
  return Status::Ok();
}

Result<std::unique_ptr<od::WriteLock>> EmbeddedDatabase::LockForWrite() {
  return std::unique_ptr<od::WriteLock>(std::make_unique<EmbeddedWriteLock>(*this));
}

}  // namespace veltor::session
