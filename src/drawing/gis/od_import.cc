#include "drawing/gis/od_import.h"

#include <strings.h>

#include <climits>
#include <cstring>
#include <memory>

#include <gdal.h>
#include <ogr_api.h>

#include "drawing/gis/gdal_support.h"
#include "drawing/gis/gis_fields.h"
#include "drawing/model/create.h"
#include "drawing/model/tables.h"
#include "drawing/session/object_ids.h"

namespace veltor::gis {

namespace {

// How one column is read from the feature's fields.
struct ColumnSource {
  od::ColumnDefinition column;
  int fields[3] = {-1, -1, -1};  // Point: x, y, z; others: fields[0]
};

struct Part {
  enum class Kind { kPoint, kLine, kRing } kind = Kind::kPoint;
  std::vector<model::Point3> points;
};

struct Feature {
  std::vector<od::Value> values;
  std::vector<Part> parts;
};

bool EndsWith(const std::string& name, const char* suffix) {
  const size_t n = std::strlen(suffix);
  return name.size() > n && strcasecmp(name.c_str() + name.size() - n, suffix) == 0;
}

// The columns of the layer's fields (see od_import.h for the mapping).
std::vector<ColumnSource> Columns(OGRFeatureDefnH defn, std::vector<std::string>& warnings) {
  const int count = OGR_FD_GetFieldCount(defn);
  std::vector<bool> used(static_cast<size_t>(count), false);
  auto name_of = [&](int i) { return std::string(OGR_Fld_GetNameRef(OGR_FD_GetFieldDefn(defn, i))); };
  auto type_of = [&](int i) { return OGR_Fld_GetType(OGR_FD_GetFieldDefn(defn, i)); };
  // The Real field named `stem` + suffix, or -1.
  auto find_real = [&](const std::string& stem, const char* suffix) {
    for (int i = 0; i < count; ++i)
      if (!used[static_cast<size_t>(i)] && type_of(i) == OFTReal &&
          strcasecmp(name_of(i).c_str(), (stem + suffix).c_str()) == 0)
        return i;
    return -1;
  };
  std::vector<ColumnSource> columns;
  for (int i = 0; i < count; ++i) {
    if (used[static_cast<size_t>(i)]) continue;
    const std::string name = name_of(i);
    if (IsEntityField(name)) continue;
    ColumnSource c;
    c.column.name = name;
    c.fields[0] = i;
    const OGRFieldType type = type_of(i);
    if (type == OFTReal && EndsWith(name, kPointSuffixes[0])) {
      const std::string stem = name.substr(0, name.size() - 2);
      used[static_cast<size_t>(i)] = true;
      const int y = find_real(stem, kPointSuffixes[1]);
      const int z = y < 0 ? -1 : find_real(stem, kPointSuffixes[2]);
      if (y >= 0 && z >= 0) {
        used[static_cast<size_t>(y)] = used[static_cast<size_t>(z)] = true;
        c.column.name = stem;
        c.column.type = od::ValueType::kPoint;
        c.fields[1] = y;
        c.fields[2] = z;
        c.column.default_value = od::Value(c.column.type);
        columns.push_back(c);
        continue;
      }
    }
    used[static_cast<size_t>(i)] = true;
    if (type == OFTInteger || type == OFTInteger64) {
      c.column.type = od::ValueType::kInteger;
    } else if (type == OFTReal) {
      c.column.type = od::ValueType::kReal;
    } else {
      c.column.type = od::ValueType::kCharacter;
      if (type != OFTString)
        warnings.push_back("field '" + name + "' (" + OGR_GetFieldTypeName(type) +
                           ") is imported as Character text");
    }
    c.column.default_value = od::Value(c.column.type);
    columns.push_back(c);
  }
  return columns;
}

Result<od::Value> ReadValue(OGRFeatureH f, const ColumnSource& c) {
  od::Value v(c.column.type);
  const int field = c.fields[0];
  if (c.column.type != od::ValueType::kPoint && !OGR_F_IsFieldSetAndNotNull(f, field)) return v;
  switch (c.column.type) {
    case od::ValueType::kInteger: {
      const GIntBig n = OGR_F_GetFieldAsInteger64(f, field);
      if (n < INT_MIN || n > INT_MAX)
        return Status::Error("field '" + c.column.name + "': " + std::to_string(n) +
                             " does not fit an Integer column");
      v.SetInteger(static_cast<int32_t>(n));
      break;
    }
    case od::ValueType::kReal:
      v.SetReal(OGR_F_GetFieldAsDouble(f, field));
      break;
    case od::ValueType::kPoint: {
      double xyz[3] = {0, 0, 0};
      for (int k = 0; k < 3; ++k)
        if (OGR_F_IsFieldSetAndNotNull(f, c.fields[k])) xyz[k] = OGR_F_GetFieldAsDouble(f, c.fields[k]);
      v.SetPoint({xyz[0], xyz[1], xyz[2]});
      break;
    }
    default:
      v.SetCharacter(OGR_F_GetFieldAsString(f, field));
      break;
  }
  return v;
}

std::vector<model::Point3> PointsOf(OGRGeometryH g) {
  std::vector<model::Point3> points;
  const int n = OGR_G_GetPointCount(g);
  points.reserve(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) {
    double x = 0, y = 0, z = 0;
    OGR_G_GetPoint(g, i, &x, &y, &z);
    points.push_back({x, y, z});
  }
  return points;
}

// The geometry's parts; curved types are first made linear.
void CollectParts(OGRGeometryH g, std::vector<Part>& parts) {
  const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(g));
  if (OGR_GT_IsNonLinear(type)) {
    OGRGeometryH linear = OGR_G_GetLinearGeometry(g, 0, nullptr);
    if (linear) {
      CollectParts(linear, parts);
      OGR_G_DestroyGeometry(linear);
    }
    return;
  }
  if (type == wkbPoint) {
    if (!OGR_G_IsEmpty(g)) parts.push_back({Part::Kind::kPoint, PointsOf(g)});
  } else if (type == wkbLineString) {
    Part p{Part::Kind::kLine, PointsOf(g)};
    if (p.points.size() >= 2) parts.push_back(std::move(p));
  } else if (type == wkbPolygon) {
    for (int i = 0; i < OGR_G_GetGeometryCount(g); ++i) {
      Part ring{Part::Kind::kRing, PointsOf(OGR_G_GetGeometryRef(g, i))};
      const auto& p = ring.points;
      if (p.size() > 1 && p.front().x == p.back().x && p.front().y == p.back().y && p.front().z == p.back().z)
        ring.points.pop_back();
      if (ring.points.size() >= 2) parts.push_back(std::move(ring));
    }
  } else {
    for (int i = 0; i < OGR_G_GetGeometryCount(g); ++i) CollectParts(OGR_G_GetGeometryRef(g, i), parts);
  }
}

struct DatasetCloser {
  void operator()(void* ds) const { GDALClose(ds); }
};

struct SourceData {
  std::string layer_name;
  std::vector<ColumnSource> columns;
  std::vector<Feature> features;
  size_t skipped = 0;
  std::vector<std::string> warnings;
};

Result<SourceData> ReadSource(const ImportOptions& options) {
  EnsureGdal();
  GdalErrorCapture errors;
  std::unique_ptr<void, DatasetCloser> ds(
      GDALOpenEx(options.source.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR, nullptr, nullptr, nullptr));
  if (!ds) return Status::Error(errors.Explain(options.source + ": cannot be opened as vector data"));
  OGRLayerH layer = nullptr;
  if (options.layer.empty()) {
    if (GDALDatasetGetLayerCount(ds.get()) == 0) return Status::Error(options.source + ": has no layers");
    layer = GDALDatasetGetLayer(ds.get(), 0);
  } else {
    layer = GDALDatasetGetLayerByName(ds.get(), options.layer.c_str());
    if (!layer) return Status::Error(options.source + ": no layer named '" + options.layer + "'");
  }
  SourceData data;
  data.layer_name = OGR_L_GetName(layer);
  data.columns = Columns(OGR_L_GetLayerDefn(layer), data.warnings);
  OGR_L_ResetReading(layer);
  while (OGRFeatureH f = OGR_L_GetNextFeature(layer)) {
    std::unique_ptr<void, void (*)(void*)> owned(f, [](void* p) { OGR_F_Destroy(static_cast<OGRFeatureH>(p)); });
    Feature feature;
    for (const ColumnSource& c : data.columns) {
      Result<od::Value> v = ReadValue(f, c);
      if (!v.ok()) return Status::Error(options.source + ": feature " + std::to_string(OGR_F_GetFID(f)) +
                                        ": " + v.message());
      feature.values.push_back(std::move(v).value());
    }
    if (OGRGeometryH g = OGR_F_GetGeometryRef(f)) CollectParts(g, feature.parts);
    if (feature.parts.empty()) {
      ++data.skipped;
      continue;
    }
    data.features.push_back(std::move(feature));
  }
  if (CPLGetLastErrorType() >= CE_Failure)
    return Status::Error(errors.Explain(options.source + ": cannot be read"));
  return data;
}

bool SameZ(const std::vector<model::Point3>& points) {
  for (const model::Point3& p : points)
    if (p.z != points[0].z) return false;
  return true;
}

model::RecordId AddPart(model::Document& doc, const std::string& layer, const Part& part) {
  if (part.kind == Part::Kind::kPoint) return model::AddPoint(doc, layer, part.points[0]);
  const bool closed = part.kind == Part::Kind::kRing;
  if (!SameZ(part.points)) return model::AddPolyline3d(doc, layer, part.points, closed);
  std::vector<model::Vertex2> vertices;
  vertices.reserve(part.points.size());
  for (const model::Point3& p : part.points) vertices.push_back({p.x, p.y, 0.0});
  return model::AddLwPolyline(doc, layer, vertices, closed, part.points[0].z);
}

bool SameColumns(const std::vector<od::ColumnDefinition>& a, const std::vector<od::ColumnDefinition>& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (a[i].name != b[i].name || a[i].type != b[i].type) return false;
  return true;
}

std::string CurrentLayer(const model::Document& doc) {
  auto value = doc.HeaderVar("$CLAYER");
  if (!value || value->empty()) return "0";
  return doc.Decode((*value)[0].value);
}

}  // namespace

Result<ImportSummary> ImportObjectData(session::SessionDocument& sd, const ImportOptions& options) {
  model::Document& doc = *sd.doc;
  session::EmbeddedObjectData& container = sd.project.container();
  if (Status s = container.store().CanWrite(); !s.ok()) return s;
  Result<SourceData> data = ReadSource(options);
  if (!data.ok()) return data.status();

  ImportSummary summary;
  summary.table = options.table.empty() ? data->layer_name : options.table;
  summary.warnings = data->warnings;
  summary.skipped = data->skipped;
  od::TableDefinition def;
  def.name = summary.table;
  for (const ColumnSource& c : data->columns) def.columns.push_back(c.column);
  Result<od::TableDefinition> existing = container.GetTable(def.name);
  if (existing.ok()) {
    if (!SameColumns(existing->columns, def.columns))
      return Status::Error("table '" + def.name + "' exists with other columns (give another table name)");
  } else {
    if (Status s = container.store().CheckNameFree(def.name); !s.ok()) return s;
    if (Status s = container.CreateTable(def); !s.ok()) return s;
    summary.table_created = true;
  }
  const std::string layer = options.target_layer.empty() ? CurrentLayer(doc) : options.target_layer;
  if (model::FindLayer(doc, layer) == model::kNoRecord) model::AddLayer(doc, layer);
  od::Record record;
  record.table = def.name;
  for (Feature& f : data->features) {
    record.values = std::move(f.values);
    for (const Part& part : f.parts) {
      const model::RecordId entity = AddPart(doc, layer, part);
      if (Status s = container.AddRecord(session::IdOf(doc, entity), record); !s.ok()) return s;
      ++summary.entities;
    }
    ++summary.features;
  }
  return summary;
}

}  // namespace veltor::gis
