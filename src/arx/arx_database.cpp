#include "arx/arx_database.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "arx/break_plan.h"
#include "arx/ocs.h"
#include "arx/open_object.h"
#include "arx/wide_text.h"

#include <acdocman.h>
#include <adslib.h>
#include <dbents.h>
#include <dbmline.h>
#include <dbmtext.h>
#include <dbpl.h>
#include <dbsol3d.h>
#include <dbspline.h>
#include <dbsymtb.h>
#include <dbdict.h>
#include <dbdynblk.h>
#include <dbxrecrd.h>

namespace veltor::arx {

namespace {

constexpr double kQuarterTurn = 1.5707963267948966;

od::Point3 ToOd(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }
AcGePoint3d ToGe(const od::Point3& p) { return AcGePoint3d(p.x, p.y, p.z); }

std::string NameOf(const AcDbSymbolTableRecord* record) {
  const ACHAR* name = nullptr;
  if (!record || record->getName(name) != Acad::eOk) return "";
  return Narrow(name);
}

std::string NameOfRecord(AcDbObjectId id) {
  OpenObject<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
  return record ? NameOf(record.get()) : std::string();
}

// Model space's block table record id, or the null id.
AcDbObjectId ModelSpaceId(AcDbDatabase* db) {
  AcDbBlockTable* table = nullptr;
  AcDbObjectId id;
  if (!db || db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return id;
  (void)table->getAt(ACDB_MODEL_SPACE, id);
  table->close();
  return id;
}

template <typename Visit>
void ForEachModelSpaceId(AcDbDatabase* db, bool forward, Visit visit) {
  OpenObject<AcDbBlockTableRecord> space(ModelSpaceId(db), AcDb::kForRead);
  if (!space) return;
  AcDbBlockTableRecordIterator* it = nullptr;
  if (space->newIterator(it, forward, true) != Acad::eOk || !it) return;
  for (; !it->done(); it->step(forward, true)) {
    AcDbObjectId id;
    if (it->getEntityId(id) == Acad::eOk && !visit(id)) break;
  }
  delete it;
}

std::optional<od::VertexList> PolylineVertices(const AcDbEntity* entity) {
  od::VertexList list;
  if (entity->isKindOf(AcDbLine::desc())) {
    auto line = static_cast<const AcDbLine*>(entity);
    list.points = {ToOd(line->startPoint()), ToOd(line->endPoint())};
    return list;
  }
  if (entity->isKindOf(AcDbPolyline::desc())) {
    auto pl = static_cast<const AcDbPolyline*>(entity);
    for (unsigned i = 0; i < pl->numVerts(); ++i) {
      AcGePoint3d p;
      if (pl->getPointAt(i, p) == Acad::eOk) list.points.push_back(ToOd(p));
    }
    list.closed = pl->isClosed();
    return list;
  }
  if (entity->isKindOf(AcDb3dPolyline::desc())) {
    auto pl = static_cast<const AcDb3dPolyline*>(entity);
    AcDbObjectIterator* it = pl->vertexIterator();
    for (; it && !it->done(); it->step()) {
      AcDb3dPolylineVertex* vertex = nullptr;
      if (pl->openVertex(vertex, it->objectId(), AcDb::kForRead) != Acad::eOk) continue;
      list.points.push_back(ToOd(vertex->position()));
      vertex->close();
    }
    delete it;
    list.closed = pl->isClosed();
    return list;
  }
  if (entity->isKindOf(AcDb2dPolyline::desc())) {
    auto pl = static_cast<const AcDb2dPolyline*>(entity);
    AcDbObjectIterator* it = pl->vertexIterator();
    for (; it && !it->done(); it->step()) {
      AcDb2dVertex* vertex = nullptr;
      if (pl->openVertex(vertex, it->objectId(), AcDb::kForRead) != Acad::eOk) continue;
      list.points.push_back(ToOd(pl->vertexPosition(*vertex)));  // world coordinates
      vertex->close();
    }
    delete it;
    list.closed = pl->isClosed();
    return list;
  }
  if (entity->isKindOf(AcDbMline::desc())) {
    auto ml = static_cast<const AcDbMline*>(entity);
    for (int i = 0; i < ml->numVertices(); ++i) list.points.push_back(ToOd(ml->vertexAt(i)));
    list.closed = ml->closedMline();
    return list;
  }
  return std::nullopt;
}

// Points of a curve at `steps` equal parameter steps between two parameters (both included).
void SampleCurve(const AcDbCurve* curve, double from, double to, int steps,
                 std::vector<od::Point3>& out) {
  if (steps < 1) steps = 1;
  for (int k = 0; k <= steps; ++k) {
    if (!out.empty() && k == 0) continue;  // the previous piece ended here
    AcGePoint3d p;
    if (curve->getPointAtParam(from + (to - from) * k / steps, p) == Acad::eOk)
      out.push_back(ToOd(p));
  }
}

// Releases the document lock when destroyed.
class DocumentLock : public od::WriteLock {
 public:
  explicit DocumentLock(AcApDocument* document) : document_(document) {}
  ~DocumentLock() override { acDocManager->unlockDocument(document_); }

 private:
  AcApDocument* document_;
};

// The code page number of a $DWGCODEPAGE value ("ANSI_1252" -> 1252); 1252 when unknown.
unsigned CodePageNumber(const std::string& dwg_code_page) {
  unsigned number = 0;
  if (std::sscanf(dwg_code_page.c_str(), "ANSI_%u", &number) == 1) return number;
  if (std::sscanf(dwg_code_page.c_str(), "ansi_%u", &number) == 1) return number;
  if (std::sscanf(dwg_code_page.c_str(), "DOS%u", &number) == 1) return number;
  return 1252;
}

// A string system variable, "" when it cannot be read. The host allocates the string with
// the C runtime's allocator and the caller frees it.
std::string StringVar(const char* name) {
  resbuf value{};
  if (acedGetVar(Widen(name).c_str(), &value) != RTNORM || value.restype != RTSTR) return "";
  std::string text = Narrow(value.resval.rstring);
  std::free(value.resval.rstring);
  return text;
}

void AppendEscape(unsigned unit, std::string& out) {
  char escape[8];
  std::snprintf(escape, sizeof escape, "\\U+%04X", unit & 0xFFFFu);
  out += escape;
}

// The value of a "\U+XXXX" escape at `i` of `text`, or -1.
long EscapeAt(const std::wstring& text, size_t i) {
  if (i + 7 > text.size() || text[i] != L'\\' || (text[i + 1] != L'U' && text[i + 1] != L'u') ||
      text[i + 2] != L'+')
    return -1;
  long value = 0;
  for (size_t k = i + 3; k < i + 7; ++k) {
    wchar_t c = text[k];
    int digit = c >= L'0' && c <= L'9'   ? c - L'0'
                : c >= L'A' && c <= L'F' ? c - L'A' + 10
                : c >= L'a' && c <= L'f' ? c - L'a' + 10
                                         : -1;
    if (digit < 0) return -1;
    value = value * 16 + digit;
  }
  return value;
}

}  // namespace

// --- model space and entity facts ---

od::EntityList ArxDatabase::ModelSpaceEntities() const {
  od::EntityList entities;
  ForEachModelSpaceId(db_, true, [&](AcDbObjectId id) {
    if (od::EntityId e = ToOdId(id)) entities.push_back(e);
    return true;
  });
  return entities;
}

bool ArxDatabase::CanOpen(od::EntityId entity) const {
  return static_cast<bool>(OpenObject<AcDbEntity>(entity, AcDb::kForRead));
}

od::ObjectId ArxDatabase::LayerOf(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  return e ? ToOdId(e->layerId()) : od::kNullId;
}

std::string ArxDatabase::EntityType(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  return e && e->isA() ? Narrow(e->isA()->dxfName()) : std::string();
}

std::string ArxDatabase::EntityClass(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  return e && e->isA() ? Narrow(e->isA()->name()) : std::string();
}

std::string ArxDatabase::EntityHandle(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  if (!e) return "";
  ACHAR buffer[20] = {};
  if (!e->objectId().handle().getIntoAsciiBuffer(buffer, 20)) return "";
  std::string handle = Narrow(buffer);
  for (char& c : handle)
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  return handle;
}

od::EntityId ArxDatabase::LastEntity() const {
  od::EntityId last = od::kNullId;
  ForEachModelSpaceId(db_, false, [&](AcDbObjectId id) {
    last = ToOdId(id);
    return false;
  });
  return last;
}

// --- layers ---

std::vector<od::LayerInfo> ArxDatabase::Layers() const {
  std::vector<od::LayerInfo> layers;
  AcDbLayerTable* table = nullptr;
  if (!db_ || db_->getLayerTable(table, AcDb::kForRead) != Acad::eOk) return layers;
  AcDbLayerTableIterator* it = nullptr;
  if (table->newIterator(it) == Acad::eOk && it) {
    for (; !it->done(); it->step()) {
      AcDbObjectId id;
      if (it->getRecordId(id) != Acad::eOk) continue;
      OpenObject<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
      if (!layer) continue;
      layers.push_back({ToOdId(id), NameOf(layer.get()), layer->isFrozen(), layer->isHidden(),
                        layer->isLocked(), layer->isOff()});
    }
    delete it;
  }
  table->close();
  return layers;
}

od::ObjectId ArxDatabase::FindLayer(const std::string& name) const {
  AcDbLayerTable* table = nullptr;
  if (!db_ || db_->getLayerTable(table, AcDb::kForRead) != Acad::eOk) return od::kNullId;
  AcDbObjectId id;
  Acad::ErrorStatus es = table->getAt(Widen(name).c_str(), id);
  table->close();
  return es == Acad::eOk ? ToOdId(id) : od::kNullId;
}

// --- geometry ---

std::optional<od::Box3> ArxDatabase::GeomExtents(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  AcDbExtents extents;
  if (!e || e->getGeomExtents(extents) != Acad::eOk) return std::nullopt;
  return od::Box3{ToOd(extents.minPoint()), ToOd(extents.maxPoint())};
}

std::optional<od::VertexList> ArxDatabase::Vertices(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  if (!e) return std::nullopt;
  return PolylineVertices(e.get());
}

std::optional<od::VertexList> ArxDatabase::Flatten(od::EntityId entity, int precision) const {
  if (precision < 1) precision = 1;
  if (precision > 99) precision = 99;
  OpenObject<AcDbCurve> curve(entity, AcDb::kForRead);
  if (!curve) {
    OpenObject<AcDbEntity> other(entity, AcDb::kForRead);  // multilines are not curves
    return other ? PolylineVertices(other.get()) : std::nullopt;
  }
  od::VertexList list;
  list.closed = curve->isClosed();
  double start = 0, end = 0;
  if (curve->getStartParam(start) != Acad::eOk || curve->getEndParam(end) != Acad::eOk)
    return std::nullopt;
  if (curve->isKindOf(AcDbLine::desc())) {
    return PolylineVertices(curve.get());
  }
  if (curve->isKindOf(AcDbPolyline::desc())) {
    // Parameter i..i+1 is segment i; an arc segment gets `precision` steps per quarter turn.
    auto pl = static_cast<AcDbPolyline*>(curve.get());
    for (int i = 0; i < static_cast<int>(std::lround(end)); ++i) {
      double bulge = 0;
      (void)pl->getBulgeAt(static_cast<unsigned>(i), bulge);
      int steps = bulge == 0 ? 1
                             : precision * std::max(1, static_cast<int>(std::ceil(
                                                           std::fabs(4 * std::atan(bulge)) /
                                                           kQuarterTurn - 1e-9)));
      SampleCurve(pl, i, i + 1, steps, list.points);
    }
    if (list.points.empty()) SampleCurve(pl, start, end, 1, list.points);
    if (list.closed && list.points.size() > 1) list.points.pop_back();
    return list;
  }
  if (curve->isKindOf(AcDb2dPolyline::desc()) || curve->isKindOf(AcDb3dPolyline::desc())) {
    return PolylineVertices(curve.get());
  }
  int steps = precision;
  if (curve->isKindOf(AcDbSpline::desc())) {
    auto spline = static_cast<AcDbSpline*>(curve.get());
    steps = precision * std::max(1, spline->numControlPoints() - spline->degree());
  } else {
    // Circles, arcs and ellipses: the parameter is an angle.
    steps = precision * std::max(1, static_cast<int>(std::ceil((end - start) / kQuarterTurn - 1e-9)));
  }
  SampleCurve(curve.get(), start, end, steps, list.points);
  if (list.closed && list.points.size() > 1) list.points.pop_back();
  return list;
}

bool ArxDatabase::IsClosedCurve(od::EntityId entity) const {
  OpenObject<AcDbCurve> curve(entity, AcDb::kForRead);
  return curve && curve->isClosed();
}

std::optional<double> ArxDatabase::Length(od::EntityId entity) const {
  OpenObject<AcDbCurve> curve(entity, AcDb::kForRead);
  double end = 0, length = 0;
  if (!curve || curve->getEndParam(end) != Acad::eOk ||
      curve->getDistAtParam(end, length) != Acad::eOk)
    return std::nullopt;
  return length;
}

std::optional<double> ArxDatabase::Area(od::EntityId entity) const {
  OpenObject<AcDbCurve> curve(entity, AcDb::kForRead);
  double area = 0;
  if (!curve || curve->getArea(area) != Acad::eOk) return std::nullopt;
  return area;
}

od::EntityList ArxDatabase::EntitiesInBox(const od::Box3& box) const {
  od::EntityList found;
  ForEachModelSpaceId(db_, true, [&](AcDbObjectId id) {
    OpenObject<AcDbEntity> e(id, AcDb::kForRead);
    AcDbExtents extents;
    if (!e || e->getGeomExtents(extents) != Acad::eOk) return true;
    const AcGePoint3d& lo = extents.minPoint();
    const AcGePoint3d& hi = extents.maxPoint();
    if (lo.x <= box.max.x && hi.x >= box.min.x && lo.y <= box.max.y && hi.y >= box.min.y)
      found.push_back(ToOdId(id));
    return true;
  });
  return found;
}

std::optional<od::Point3> ArxDatabase::InsertionPoint(od::EntityId entity) const {
  OpenObject<AcDbBlockReference> ref(entity, AcDb::kForRead);
  if (!ref) return std::nullopt;
  return ToOd(ref->position());
}

std::optional<std::string> ArxDatabase::EffectiveBlockName(od::EntityId entity) const {
  AcDbObjectId block;
  {
    OpenObject<AcDbBlockReference> ref(entity, AcDb::kForRead);
    if (!ref) return std::nullopt;
    block = ref->blockTableRecord();
  }
  AcDbDynBlockReference dynamic(ToAcDbIdOrNull(entity));
  if (dynamic.isDynamicBlock()) block = dynamic.dynamicBlockTableRecord();
  return NameOfRecord(block);
}

std::vector<od::AttributeFacts> ArxDatabase::Attributes(od::EntityId block_reference) const {
  std::vector<od::AttributeFacts> attributes;
  OpenObject<AcDbBlockReference> ref(block_reference, AcDb::kForRead);
  if (!ref) return attributes;
  AcDbObjectIterator* it = ref->attributeIterator();
  for (; it && !it->done(); it->step()) {
    OpenObject<AcDbAttribute> attribute(it->objectId(), AcDb::kForRead);
    if (!attribute) continue;
    attributes.push_back({ToOdId(it->objectId()), Narrow(attribute->tagConst()),
                          Narrow(attribute->textStringConst())});
  }
  delete it;
  return attributes;
}

std::optional<od::TextFacts> ArxDatabase::Text(od::EntityId entity) const {
  {
    OpenObject<AcDbText> text(entity, AcDb::kForRead);
    if (text) {
      od::TextFacts facts;
      facts.position = ToOd(text->position());
      facts.alignment_point = ToOd(text->alignmentPoint());
      facts.horizontal_mode = text->horizontalMode();
      facts.vertical_mode = text->verticalMode();
      facts.text = Narrow(text->textStringConst());
      facts.height = text->height();
      return facts;
    }
  }
  OpenObject<AcDbMText> mtext(entity, AcDb::kForRead);
  if (!mtext) return std::nullopt;
  od::TextFacts facts;
  facts.multiline = true;
  facts.position = facts.alignment_point = ToOd(mtext->location());
  facts.text = TakeHostString(mtext->text());
  facts.height = mtext->textHeight();
  return facts;
}

std::optional<double> ArxDatabase::SolidVolume(od::EntityId entity) const {
  OpenObject<AcDb3dSolid> solid(entity, AcDb::kForRead);
  if (!solid) return std::nullopt;
  double volume = 0;
  AcGePoint3d centroid;
  double moments[3], products[3], principal[3], radii[3];
  AcGeVector3d axes[3];
  AcDbExtents extents;
  if (solid->getMassProp(volume, centroid, moments, products, principal, axes, radii, extents) !=
      Acad::eOk)
    return std::nullopt;
  return volume;
}

// --- text files in the drawing's code page ---

std::string ArxDatabase::ToAnsiCodePage(const std::string& utf8) const {
  unsigned code_page = CodePageNumber(StringVar("DWGCODEPAGE"));
  std::wstring wide = Widen(utf8);
  std::string out;
  for (wchar_t unit : wide) {
    char bytes[8];
    BOOL lossy = FALSE;
    int n = WideCharToMultiByte(code_page, WC_NO_BEST_FIT_CHARS, &unit, 1, bytes, sizeof bytes,
                                nullptr, &lossy);
    if (n <= 0 || lossy)
      AppendEscape(static_cast<unsigned>(unit), out);
    else
      out.append(bytes, static_cast<size_t>(n));
  }
  return out;
}

std::string ArxDatabase::FromAnsiCodePage(const std::string& bytes) const {
  unsigned code_page = CodePageNumber(StringVar("DWGCODEPAGE"));
  std::wstring wide;
  if (!bytes.empty()) {
    int n = MultiByteToWideChar(code_page, 0, bytes.data(), static_cast<int>(bytes.size()),
                                nullptr, 0);
    wide.resize(n > 0 ? static_cast<size_t>(n) : 0);
    if (n > 0)
      MultiByteToWideChar(code_page, 0, bytes.data(), static_cast<int>(bytes.size()), &wide[0], n);
  }
  std::wstring resolved;
  for (size_t i = 0; i < wide.size(); ++i) {
    long unit = EscapeAt(wide, i);
    if (unit < 0) {
      resolved.push_back(wide[i]);
      continue;
    }
    resolved.push_back(static_cast<wchar_t>(unit));  // pairs of escapes form one character
    i += 6;
  }
  return Narrow(resolved);
}

// --- system variables ---

std::optional<int> ArxDatabase::GetIntVar(const std::string& name) const {
  resbuf value{};
  if (acedGetVar(Widen(name).c_str(), &value) != RTNORM) return std::nullopt;
  if (value.restype == RTSHORT) return value.resval.rint;
  if (value.restype == RTLONG) return static_cast<int>(value.resval.rlong);
  return std::nullopt;
}

Status ArxDatabase::SetIntVar(const std::string& name, int value) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = static_cast<short>(value);
  if (acedSetVar(Widen(name).c_str(), &rb) != RTNORM)
    return Status::Error("system variable " + name + ": the host refused the value");
  return Status::Ok();
}

// --- creating, changing, erasing ---

Result<od::EntityId> ArxDatabase::AppendToModelSpace(AcDbEntity* entity) {
  OpenObject<AcDbBlockTableRecord> space(ModelSpaceId(db_), AcDb::kForWrite);
  AcDbObjectId id;
  if (!space || space->appendAcDbEntity(id, entity) != Acad::eOk) {
    delete entity;  // never added: still ours
    return Status::Error("model space: the entity could not be added");
  }
  entity->close();
  return ToOdId(id);
}

Result<od::EntityId> ArxDatabase::AddPoint(const od::Point3& at) {
  return AppendToModelSpace(new AcDbPoint(ToGe(at)));
}

Result<od::EntityId> ArxDatabase::AddPolyline3d(const std::vector<od::Point3>& points,
                                                bool closed) {
  AcGePoint3dArray vertices;
  for (const od::Point3& p : points) vertices.append(ToGe(p));
  return AppendToModelSpace(new AcDb3dPolyline(AcDb::k3dSimplePoly, vertices, closed));
}

Result<od::EntityId> ArxDatabase::AddLwPolyline(const std::vector<od::Point3>& points, bool closed,
                                                const od::Point3& normal) {
  auto polyline = new AcDbPolyline(static_cast<unsigned>(points.size()));
  double elevation = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    od::Point3 ocs = WorldToOcs(points[i], normal);
    elevation = ocs.z;
    polyline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(ocs.x, ocs.y));
  }
  polyline->setNormal(AcGeVector3d(normal.x, normal.y, normal.z));
  polyline->setElevation(elevation);
  polyline->setClosed(closed);
  return AppendToModelSpace(polyline);
}

Result<od::EntityId> ArxDatabase::AddBlockReference(const std::string& block, const od::Point3& at,
                                                    double scale, const std::string& layer) {
  AcDbBlockTable* table = nullptr;
  AcDbObjectId definition;
  if (!db_ || db_->getBlockTable(table, AcDb::kForRead) != Acad::eOk)
    return Status::Error("block " + block + ": the block table cannot be read");
  Acad::ErrorStatus es = table->getAt(Widen(block).c_str(), definition);
  table->close();
  if (es != Acad::eOk) return Status::Error("block " + block + ": no such block");
  auto reference = new AcDbBlockReference(ToGe(at), definition);
  reference->setScaleFactors(AcGeScale3d(scale));
  if (!layer.empty()) (void)reference->setLayer(Widen(layer).c_str());
  return AppendToModelSpace(reference);
}

Result<od::ObjectId> ArxDatabase::AddLayer(const std::string& name, long true_color) {
  AcDbLayerTable* table = nullptr;
  if (!db_ || db_->getLayerTable(table, AcDb::kForWrite) != Acad::eOk)
    return Status::Error("layer " + name + ": the layer table cannot be changed");
  std::wstring wide = Widen(name);
  if (table->has(wide.c_str())) {
    table->close();
    return Status::Error("layer " + name + ": the name is taken");
  }
  auto layer = new AcDbLayerTableRecord;
  AcCmColor color;
  color.setRGB(static_cast<Adesk::UInt8>((true_color >> 16) & 0xFF),
               static_cast<Adesk::UInt8>((true_color >> 8) & 0xFF),
               static_cast<Adesk::UInt8>(true_color & 0xFF));
  layer->setColor(color);
  AcDbObjectId id;
  if (layer->setName(wide.c_str()) != Acad::eOk || table->add(id, layer) != Acad::eOk) {
    delete layer;
    table->close();
    return Status::Error("layer " + name + ": the layer could not be added");
  }
  layer->close();
  table->close();
  return ToOdId(id);
}

bool ArxDatabase::HasBlock(const std::string& name) const {
  AcDbBlockTable* table = nullptr;
  if (!db_ || db_->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return false;
  bool has = table->has(Widen(name).c_str());
  table->close();
  return has;
}

Status ArxDatabase::AddCircleBlock(const std::string& name, const od::Point3& center,
                                   double radius) {
  AcDbBlockTable* table = nullptr;
  if (!db_ || db_->getBlockTable(table, AcDb::kForWrite) != Acad::eOk)
    return Status::Error("block " + name + ": the block table cannot be changed");
  auto block = new AcDbBlockTableRecord;
  block->setOrigin(AcGePoint3d(0, 0, 0));
  AcDbObjectId id;
  if (block->setName(Widen(name).c_str()) != Acad::eOk || table->add(id, block) != Acad::eOk) {
    delete block;
    table->close();
    return Status::Error("block " + name + ": the block could not be added");
  }
  table->close();
  auto circle = new AcDbCircle(ToGe(center), AcGeVector3d(0, 0, 1), radius);
  AcDbObjectId circle_id;
  Acad::ErrorStatus es = block->appendAcDbEntity(circle_id, circle);
  if (es == Acad::eOk)
    circle->close();
  else
    delete circle;
  block->close();
  return es == Acad::eOk ? Status::Ok()
                         : Status::Error("block " + name + ": the circle could not be added");
}

std::optional<od::EntityProperties> ArxDatabase::Properties(od::EntityId entity) const {
  OpenObject<AcDbEntity> e(entity, AcDb::kForRead);
  if (!e) return std::nullopt;
  od::EntityProperties p;
  p.layer = TakeHostString(e->layer());
  p.linetype = TakeHostString(e->linetype());
  p.color = e->colorIndex();
  AcCmColor color = e->color();
  if (color.colorMethod() == AcCm::kByColor)
    p.true_color = (long{color.red()} << 16) | (long{color.green()} << 8) | long{color.blue()};
  p.linetype_scale = e->linetypeScale();
  p.lineweight = static_cast<int>(e->lineWeight());
  p.plot_style = TakeHostString(e->plotStyleName());
  // The raw DXF form: ByBlock is 0x01000000, a value 0x02000000 plus its alpha.
  AcCmTransparency transparency = e->transparency();
  if (transparency.isByBlock())
    p.transparency = 0x01000000L;
  else if (!transparency.isByLayer())
    p.transparency = 0x02000000L | long{transparency.alpha()};
  // Hyperlinks are not read on this host yet: they stay "".
  return p;
}

Status ArxDatabase::CopyProperties(od::EntityId from, od::EntityId to) {
  OpenObject<AcDbEntity> source(from, AcDb::kForRead);
  if (!source) return Status::Error("copy properties: the source entity cannot be opened");
  OpenObject<AcDbEntity> target(to, AcDb::kForWrite);
  if (!target) return Status::Error("copy properties: the target entity cannot be opened");
  if (target->setPropertiesFrom(source.get(), false) != Acad::eOk)
    return Status::Error("copy properties: the host refused the properties");
  return Status::Ok();
}

Status ArxDatabase::CopyGraphicProperties(od::EntityId from, od::EntityId to) {
  OpenObject<AcDbEntity> source(from, AcDb::kForRead);
  if (!source) return Status::Error("copy properties: the source entity cannot be opened");
  OpenObject<AcDbEntity> target(to, AcDb::kForWrite);
  if (!target) return Status::Error("copy properties: the target entity cannot be opened");
  bool ok = target->setColor(source->color(), true) == Acad::eOk &&
            target->setLayer(source->layerId(), true) == Acad::eOk &&
            target->setLinetype(source->linetypeId(), true) == Acad::eOk &&
            target->setLinetypeScale(source->linetypeScale(), true) == Acad::eOk &&
            target->setLineWeight(source->lineWeight(), true) == Acad::eOk;
  return ok ? Status::Ok() : Status::Error("copy properties: the host refused a property");
}

Status ArxDatabase::Erase(od::EntityId entity) {
  OpenObject<AcDbEntity> e(entity, AcDb::kForWrite);
  if (!e) return Status::Error("erase: the entity cannot be opened");
  if (e->erase() != Acad::eOk) return Status::Error("erase: the host refused");
  return Status::Ok();
}

namespace {

bool IsBreakable(const AcDbCurve* curve) {
  return curve->isKindOf(AcDbLine::desc()) || curve->isKindOf(AcDbArc::desc()) ||
         curve->isKindOf(AcDbCircle::desc()) || curve->isKindOf(AcDbPolyline::desc()) ||
         curve->isKindOf(AcDb3dPolyline::desc()) || curve->isKindOf(AcDbSpline::desc());
}

}  // namespace

Result<od::EntityList> ArxDatabase::BreakCurve(od::EntityId entity, const od::Point3& first,
                                               const od::Point3& second) {
  Result<AcDbObjectId> id = ToAcDbId(entity);
  if (!id.ok()) return id.status().Wrap("break");
  OpenObject<AcDbCurve> curve(*id, AcDb::kForWrite);
  if (!curve) return Status::Error("break: the entity cannot be opened or is not a curve");
  if (!IsBreakable(curve.get())) return Status::Error("break: this kind of curve cannot be broken");
  AcGePoint3d on_a, on_b;
  double a = 0, b = 0, start = 0, end = 0;
  if (curve->getClosestPointTo(ToGe(first), on_a) != Acad::eOk ||
      curve->getClosestPointTo(ToGe(second), on_b) != Acad::eOk ||
      curve->getParamAtPoint(on_a, a) != Acad::eOk || curve->getParamAtPoint(on_b, b) != Acad::eOk ||
      curve->getStartParam(start) != Acad::eOk || curve->getEndParam(end) != Acad::eOk)
    return Status::Error("break: the points cannot be found on the curve");
  std::optional<BreakPlan> plan = PlanBreak(curve->isClosed(), start, end, a, b);
  if (!plan) return Status::Error("break: the points leave the curve whole or nothing of it");

  AcGeDoubleArray params;
  for (double p : plan->params) params.append(p);
  AcDbVoidPtrArray pieces;
  if (curve->getSplitCurves(params, pieces) != Acad::eOk ||
      static_cast<size_t>(pieces.length()) != plan->pieces) {
    for (int i = 0; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
    return Status::Error("break: the host cannot split the curve there");
  }
  std::vector<AcDbEntity*> kept;
  for (int i = 0; i < pieces.length(); ++i) {
    auto piece = static_cast<AcDbEntity*>(pieces[i]);
    if (std::find(plan->kept.begin(), plan->kept.end(), static_cast<size_t>(i)) != plan->kept.end())
      kept.push_back(piece);
    else
      delete piece;  // the part the break removes
  }
  // The first piece takes the entity's place: same id, handle, extension dictionary.
  Acad::ErrorStatus es = curve->handOverTo(kept[0], true, true);
  if (es != Acad::eObjectToBeDeleted && es != Acad::eOk) {
    for (AcDbEntity* piece : kept) delete piece;
    return Status::Error("break: the host refused to replace the curve");
  }
  if (es == Acad::eObjectToBeDeleted) delete curve.release();
  kept[0]->close();
  od::EntityList result{entity};
  for (size_t i = 1; i < kept.size(); ++i) {
    Result<od::EntityId> added = AppendToModelSpace(kept[i]);
    if (!added.ok()) return added.status().Wrap("break");
    result.push_back(*added);
  }
  return result;
}

Status ArxDatabase::CopyExtensionData(od::EntityId from, od::EntityId to) {
  // Object Data and classification live in the host's own objects, not in data records, so
  // copying only XRECORD entries leaves them to the project.
  AcDbObjectId source_dictionary;
  {
    OpenObject<AcDbEntity> source(from, AcDb::kForRead);
    if (!source) return Status::Error("copy extension data: the source cannot be opened");
    source_dictionary = source->extensionDictionary();
  }
  if (source_dictionary.isNull()) return Status::Ok();
  std::vector<std::pair<std::wstring, AcDbObject*>> copies;
  {
    OpenObject<AcDbDictionary> dictionary(source_dictionary, AcDb::kForRead);
    AcDbDictionaryIterator* it = dictionary ? dictionary->newIterator() : nullptr;
    for (; it && !it->done(); it->next()) {
      OpenObject<AcDbXrecord> record(it->objectId(), AcDb::kForRead);
      if (!record) continue;
      if (auto copy = static_cast<AcDbObject*>(record->clone()))
        copies.emplace_back(it->name() ? it->name() : L"", copy);
    }
    delete it;
  }
  if (copies.empty()) return Status::Ok();
  AcDbObjectId target_dictionary;
  {
    OpenObject<AcDbEntity> target(to, AcDb::kForWrite);
    if (target) {
      (void)target->createExtensionDictionary();  // fails harmlessly when it has one
      target_dictionary = target->extensionDictionary();
    }
  }
  OpenObject<AcDbDictionary> dictionary(target_dictionary, AcDb::kForWrite);
  Status status = Status::Ok();
  for (auto& [key, copy] : copies) {
    AcDbObjectId added;
    if (!dictionary || dictionary->setAt(key.c_str(), copy, added) != Acad::eOk) {
      delete copy;
      status = Status::Error("copy extension data: the target cannot take the data records");
      continue;
    }
    copy->close();
  }
  return status;
}

Status ArxDatabase::SetAttributeText(od::ObjectId attribute, const std::string& text) {
  OpenObject<AcDbAttribute> a(attribute, AcDb::kForWrite);
  if (!a) return Status::Error("attribute: it cannot be opened or is not an attribute");
  if (a->setTextString(Widen(text).c_str()) != Acad::eOk)
    return Status::Error("attribute: the host refused the text");
  return Status::Ok();
}

Result<std::unique_ptr<od::WriteLock>> ArxDatabase::LockForWrite() {
  AcApDocument* document = acDocManager->curDocument();
  if (!document || document->database() != db_)
    return Status::Error("lock: the drawing is not the active document");
  if (acDocManager->lockDocument(document, AcAp::kWrite) != Acad::eOk)
    return Status::Error("lock: the document is locked by another holder");
  return std::unique_ptr<od::WriteLock>(new DocumentLock(document));
}

}  // namespace veltor::arx
