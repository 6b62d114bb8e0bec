#include "drawing/gis/od_export.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <map>
#include <memory>

#include <gdal.h>
#include <ogr_srs_api.h>

#include "drawing/gis/gdal_support.h"
#include "drawing/gis/gis_fields.h"
#include "drawing/gis/gis_geometry.h"
#include "drawing/gis/output_target.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry_tags.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::gis {

namespace {

bool SameColumns(const od::TableDefinition& a, const od::TableDefinition& b) {
  if (a.columns.size() != b.columns.size()) return false;
  for (size_t i = 0; i < a.columns.size(); ++i)
    if (a.columns[i].name != b.columns[i].name || a.columns[i].type != b.columns[i].type) return false;
  return true;
}

struct LayerPlan {
  od::TableDefinition table;
  bool entity_fields_only = false;  // the layer of entities without records
  OGRLayerH layer = nullptr;
};

// The tables to export, in the order the drawings define them, checked against each other.
Result<std::vector<LayerPlan>> PlanLayers(const std::vector<ExportSource>& drawings,
                                          const ExportOptions& options) {
  std::vector<LayerPlan> plans;
  std::map<std::string, std::string> defined_in;  // table -> drawing
  for (const ExportSource& d : drawings) {
    objectdata::ObjectDataStore store(*d.doc);
    for (const std::string& name : store.TableNames()) {
      if (!options.tables.empty() &&
          std::find(options.tables.begin(), options.tables.end(), name) == options.tables.end())
        continue;
      Result<od::TableDefinition> def = store.GetTable(name);
      if (!def.ok()) return def.status();
      auto seen = defined_in.find(name);
      if (seen == defined_in.end()) {
        defined_in[name] = d.name;
        plans.push_back({*def, false, nullptr});
        continue;
      }
      for (const LayerPlan& p : plans)
        if (p.table.name == name && !SameColumns(p.table, *def))
          return Status::Error("table '" + name + "': its columns in " + d.name +
                               " differ from those in " + seen->second);
    }
  }
  for (const std::string& wanted : options.tables)
    if (!defined_in.count(wanted)) return Status::Error("no table named '" + wanted + "' in the drawings");
  if (options.without_records) {
    LayerPlan none;
    none.table.name = kNoRecordsLayer;
    none.entity_fields_only = true;
    plans.push_back(none);
  }
  return plans;
}

struct SrsDeleter {
  void operator()(OGRSpatialReferenceH srs) const { OSRRelease(srs); }
};
using SrsPtr = std::unique_ptr<std::remove_pointer_t<OGRSpatialReferenceH>, SrsDeleter>;

// The layers' spatial reference. Without one, a GeoPackage is told that the coordinates are
// Cartesian drawing units (its "undefined Cartesian" entry) rather than the undefined
// geographic system it assumes otherwise.
Result<SrsPtr> ReadSrs(const std::string& text, bool geopackage, const GdalErrorCapture& errors) {
  if (text.empty() && !geopackage) return SrsPtr();
  SrsPtr srs(OSRNewSpatialReference(nullptr));
  if (text.empty()) {
    OSRSetLocalCS(srs.get(), "Undefined cartesian SRS");
    return srs;
  }
  OSRSetAxisMappingStrategy(srs.get(), OAMS_TRADITIONAL_GIS_ORDER);
  if (OSRSetFromUserInput(srs.get(), text.c_str()) != OGRERR_NONE)
    return Status::Error(errors.Explain("spatial reference '" + text + "': not understood"));
  return srs;
}

// An open output dataset with its transaction; closing without Commit() rolls back.
class Output {
 public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output() {
    if (!ds_) return;
    if (in_transaction_) GDALDatasetRollbackTransaction(ds_);
    GDALClose(ds_);
  }
  GDALDatasetH ds_ = nullptr;
  bool in_transaction_ = false;
};

std::string HandleText(model::Handle handle) {
  char text[24];
  std::snprintf(text, sizeof text, "%" PRIX64, static_cast<uint64_t>(handle));
  return text;
}

class Exporter {
 public:
  Exporter(const ExportOptions& options, std::vector<LayerPlan>& plans)
      : options_(options), plans_(plans) {}

  // Writes every drawing's features into the plans' layers.
  Status Write(const std::vector<ExportSource>& drawings, ExportSummary& summary) {
    std::vector<std::string> wanted;
    for (const LayerPlan& p : plans_)
      if (!p.entity_fields_only) wanted.push_back(p.table.name);
    LayerPlan* no_records = options_.without_records ? &plans_.back() : nullptr;
    for (const ExportSource& d : drawings) {
      objectdata::ObjectDataStore store(*d.doc);
      std::map<std::string, LayerPlan*> by_table;
      for (LayerPlan& p : plans_) by_table[p.table.name] = &p;
      model::RecordTags tags;
      EntityFacts facts;
      facts.drawing = d.name;
      for (model::RecordId entity : model::ModelSpaceEntities(*d.doc)) {
        size_t damaged = 0;
        std::vector<od::Record> records = wanted.empty()
                                              ? std::vector<od::Record>()
                                              : store.RecordsOf(entity, wanted, damaged);
        summary.damaged_records += damaged;
        if (records.empty() && !no_records) continue;
        tags.Read(d.doc->store(), entity);
        facts.handle = HandleText(d.doc->store().at(entity).handle);
        facts.type = d.doc->TypeOf(entity);
        facts.layer = d.doc->Decode(tags.Text(8, "0"));
        GeometryPtr geometry = EntityGeometry(*d.doc, entity, options_.deviation);
        if (records.empty()) {
          if (Status s = Add(*no_records, facts, nullptr, geometry.get()); !s.ok()) return s;
          ++summary.features;
          continue;
        }
        for (const od::Record& r : records) {
          if (Status s = Add(*by_table[r.table], facts, &r, geometry.get()); !s.ok()) return s;
          ++summary.features;
        }
      }
    }
    return Status::Ok();
  }

 private:
  Status Add(LayerPlan& plan, const EntityFacts& facts, const od::Record* record,
             OGRGeometryH geometry) {
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(plan.layer));
    SetFields(feature, facts, record);
    if (geometry) OGR_F_SetGeometry(feature, geometry);
    OGRErr err = OGR_L_CreateFeature(plan.layer, feature);
    OGR_F_Destroy(feature);
    if (err != OGRERR_NONE)
      return Status::Error("layer '" + plan.table.name + "': entity " + facts.handle + " of " +
                           facts.drawing + " cannot be written");
    return Status::Ok();
  }

  const ExportOptions& options_;
  std::vector<LayerPlan>& plans_;
};

Status CreateLayers(Output& out, std::vector<LayerPlan>& plans, OGRSpatialReferenceH srs,
                    const ExportOptions& options, bool postgres, const GdalErrorCapture& errors) {
  for (LayerPlan& p : plans) {
    const std::string& name = p.table.name;
    std::vector<const char*> layer_options;
    if (postgres) {
      // Column names stay as the table has them (the driver folds them to lower case otherwise).
      layer_options.push_back("LAUNDER=NO");
      if (GDALDatasetGetLayerByName(out.ds_, name.c_str())) {
        if (!options.overwrite)
          return Status::Error("table '" + name + "' exists in the database (give --overwrite to replace it)");
        layer_options.push_back("OVERWRITE=YES");
      }
    }
    layer_options.push_back(nullptr);
    p.layer = GDALDatasetCreateLayer(out.ds_, name.c_str(), srs, wkbUnknown,
                                     const_cast<char**>(layer_options.data()));
    if (!p.layer) return Status::Error(errors.Explain("layer '" + name + "': cannot be created"));
    Status fields = CreateFields(p.layer, p.entity_fields_only ? nullptr : &p.table);
    if (!fields.ok()) return Status::Error(errors.Explain("layer '" + name + "': " + fields.message()));
  }
  return Status::Ok();
}

Result<GDALDriverH> WritableDriver(const std::string& format) {
  GDALDriverH driver = GDALGetDriverByName(format.c_str());
  if (!driver || !GDALGetMetadataItem(driver, GDAL_DCAP_VECTOR, nullptr))
    return Status::Error("format '" + format + "': not a vector format GDAL knows (ogrinfo --formats lists them)");
  if (!GDALGetMetadataItem(driver, GDAL_DCAP_CREATE, nullptr))
    return Status::Error("format '" + format + "': GDAL cannot write it");
  return driver;
}

// Fills the open output; the transaction, when the driver has one, spans every write.
Status Fill(Output& out, std::vector<LayerPlan>& plans, const std::vector<ExportSource>& drawings,
            const ExportOptions& options, OGRSpatialReferenceH srs, bool postgres,
            const GdalErrorCapture& errors, ExportSummary& summary) {
  out.in_transaction_ = GDALDatasetStartTransaction(out.ds_, FALSE) == OGRERR_NONE;
  if (Status s = CreateLayers(out, plans, srs, options, postgres, errors); !s.ok()) return s;
  Exporter exporter(options, plans);
  if (Status s = exporter.Write(drawings, summary); !s.ok()) return Status::Error(errors.Explain(s.message()));
  if (out.in_transaction_) {
    out.in_transaction_ = false;
    if (GDALDatasetCommitTransaction(out.ds_) != OGRERR_NONE)
      return Status::Error(errors.Explain("the output cannot be completed"));
  }
  summary.layers = plans.size();
  return Status::Ok();
}

}  // namespace

Result<ExportSummary> ExportObjectData(const std::vector<ExportSource>& drawings,
                                       const ExportOptions& options) {
  EnsureGdal();
  GdalErrorCapture errors;
  const bool postgres = IsPostgres(options.target);
  Result<GDALDriverH> driver = WritableDriver(postgres ? "PostgreSQL" : options.format);
  if (!driver.ok()) return driver.status();
  Result<SrsPtr> srs = ReadSrs(options.srs, !postgres && options.format == "GPKG", errors);
  if (!srs.ok()) return srs.status();
  Result<std::vector<LayerPlan>> plans = PlanLayers(drawings, options);
  if (!plans.ok()) return plans.status();
  if (plans->empty())
    return Status::Error("nothing to export: the drawings have no Object Data tables (give "
                         "--without-records to export their entities)");

  ExportSummary summary;
  if (postgres) {
    Output out;
    out.ds_ = GDALOpenEx(options.target.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE | GDAL_OF_VERBOSE_ERROR, nullptr, nullptr, nullptr);
    if (!out.ds_) return Status::Error(errors.Explain("database: cannot be opened"));
    if (Status s = Fill(out, *plans, drawings, options, srs->get(), true, errors, summary); !s.ok())
      return s.Wrap("database");
    return summary;
  }

  Result<OutputTarget> target = OutputTarget::Prepare(options.target);
  if (!target.ok()) return target.status();
  Status written;
  {
    Output out;
    out.ds_ = GDALCreate(*driver, target->write_path().c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!out.ds_) {
      target->Discard();
      return Status::Error(errors.Explain(options.target + ": cannot be written"));
    }
    written = Fill(out, *plans, drawings, options, srs->get(), false, errors, summary);
    if (written.ok()) {
      CPLErrorReset();
      GDALClose(out.ds_);
      out.ds_ = nullptr;
      if (CPLGetLastErrorType() >= CE_Failure)
        written = Status::Error(errors.Explain("the output cannot be completed"));
    }
  }
  if (written.ok()) written = target->Commit();
  if (!written.ok()) {
    target->Discard();
    return written.Wrap(options.target);
  }
  return summary;
}

}  // namespace veltor::gis
