#include "city_generator.h"

#include <cmath>
#include <vector>

#include "drawing/model/blocks.h"
#include "drawing/model/create.h"
#include "drawing/model/objects.h"
#include "drawing/model/tables.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::tools {

namespace {

using model::Point3;
using model::RecordId;

// A small generator with a fixed algorithm (splitmix64), so files are the same on every
// platform and library version.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  double Uniform(double lo, double hi) { return lo + (hi - lo) * (Next() >> 11) * 0x1.0p-53; }
  size_t Index(size_t n) { return static_cast<size_t>(Next() % n); }

 private:
  uint64_t state_;
};

// Millimetre precision keeps coordinates short in the file, as survey data is.
double Mm(double v) { return std::round(v * 1000.0) / 1000.0; }

const char* const kOwners[] = {"Anders Holm", "Maria Rossi", "José Núñez", "Chen Wei",
                               "Ирина Иванова", "Søren Østergaard", "Élodie Marchand",
                               "Municipality", "Kowalski Sp. z o.o.", "Γιώργος Παππάς"};
const char* const kRoads[] = {"Main Road", "Harbour Road", "Oak Street", "Mill Lane",
                              "Station Road", "Church Street", "Ring Road", "Birch Avenue"};
const char* const kRoadClasses[] = {"primary", "secondary", "residential", "service"};
const char* const kSpecies[] = {"Quercus robur", "Tilia cordata", "Betula pendula",
                                "Acer platanoides", "Pinus sylvestris"};
const char* const kZones[] = {"R1", "R2", "C1", "I1", "MX"};
const char* const kMaterials[] = {"PVC", "concrete", "cast iron", "PE"};

od::ColumnDefinition Column(const char* name, od::ValueType type, const char* description = "") {
  od::ColumnDefinition c;
  c.name = name;
  c.type = type;
  c.description = description;
  c.default_value = od::Value(type);
  return c;
}

class CityBuilder {
 public:
  CityBuilder(model::Document& doc, const CityOptions& options)
      : doc_(doc), od_(doc), random_(options.seed), budget_(options.entities) {}

  Status Build() {
    if (Status s = od_.CanWrite(); !s.ok()) return s;
    DefineLayers();
    DefineBlocks();
    if (Status s = DefineTables(); !s.ok()) return s;
    // The town grows lot by lot along a square spiral-free grid until the budget is spent.
    size_t side = static_cast<size_t>(std::ceil(std::sqrt(static_cast<double>(budget_) / 22.0))) + 1;
    for (size_t lot = 0; count_ < budget_; ++lot) {
      double ox = static_cast<double>(lot % side) * 60.0;
      double oy = static_cast<double>(lot / side) * 60.0;
      if (Status s = Lot(lot, ox, oy); !s.ok()) return s;
    }
    return Status::Ok();
  }

 private:
  bool Room() const { return count_ < budget_; }

  void DefineLayers() {
    for (const char* name : {"PARCELS", "LABELS", "ROADS", "PIPES", "MANHOLES", "TREES",
                             "SURVEY", "CURVES"})
      model::AddLayer(doc_, name, 1 + static_cast<int>(random_.Index(7)));
    model::SetLayerFrozen(doc_, model::AddLayer(doc_, "ARCHIVE", 8), true);
    model::SetLayerLocked(doc_, model::AddLayer(doc_, "CONTOURS", 3), true);
    model::SetLayerOff(doc_, model::AddLayer(doc_, "NOTES", 2), true);
  }

  void DefineBlocks() {
    std::vector<model::BlockEntityBody> ring{
        {"CIRCLE", "0", {{100, "AcDbCircle"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "0.6"}}},
        {"LINE", "0", {{100, "AcDbLine"}, {10, "-0.6"}, {20, "0"}, {30, "0"},
                       {11, "0.6"}, {21, "0"}, {31, "0"}}}};
    std::vector<std::pair<std::string, std::string>> attributes{{"ID", ""}, {"DEPTH", "0"}};
    model::AddBlockDefinition(doc_, "MANHOLE", Point3{}, ring, attributes);
    // A dynamic block: the named definition, and the anonymous copy its references use,
    // which points back to the named one through AcDbBlockRepBTag xdata.
    RecordId valve = model::AddBlockDefinition(doc_, "VALVE", Point3{}, ring, attributes);
    RecordId copy = model::AddBlockDefinition(doc_, "*U1", Point3{}, ring, attributes);
    model::EnsureAppId(doc_, "AcDbBlockRepBTag");
    dxf::Tags& tags = doc_.MutableTags(copy);
    tags.push_back({1001, "AcDbBlockRepBTag"});
    tags.push_back({1070, "1"});
    tags.push_back({1005, dxf::FormatHandle(doc_.store().at(valve).handle)});
  }

  Status DefineTables() {
    const std::vector<od::TableDefinition> tables{
        {"Parcels", "Land parcels",
         {Column("PARCEL_ID", od::ValueType::kInteger), Column("OWNER", od::ValueType::kCharacter),
          Column("AREA", od::ValueType::kReal, "square metres"), Column("CENTROID", od::ValueType::kPoint)}},
        {"Zoning", "Planning zones", {Column("ZONE", od::ValueType::kCharacter), Column("FAR", od::ValueType::kReal)}},
        {"Roads", "Street network",
         {Column("NAME", od::ValueType::kCharacter), Column("CLASS", od::ValueType::kCharacter),
          Column("LENGTH", od::ValueType::kReal)}},
        {"Pipes", "Sewer pipes", {Column("MATERIAL", od::ValueType::kCharacter), Column("DIAMETER", od::ValueType::kInteger)}},
        {"Manholes", "Sewer manholes", {Column("ID", od::ValueType::kCharacter), Column("DEPTH", od::ValueType::kReal)}},
        {"Trees", "Street trees", {Column("SPECIES", od::ValueType::kCharacter), Column("HEIGHT", od::ValueType::kReal)}},
        {"Contours", "", {Column("ELEVATION", od::ValueType::kReal)}},
        {"Notes", "", {Column("TEXT", od::ValueType::kCharacter)}},
        {"TPMNODE_1", "topology nodes", {Column("NODE_ID", od::ValueType::kInteger)}}};
    for (const od::TableDefinition& t : tables)
      if (Status s = od_.CreateTable(t); !s.ok()) return s;
    return Status::Ok();
  }

  Status Attach(RecordId entity, const char* table, std::vector<od::Value> values) {
    return od_.AddRecord(entity, od::Record{table, std::move(values)});
  }

  RecordId Counted(RecordId id) {
    ++count_;
    return id;
  }

  Status Lot(size_t lot, double ox, double oy) {
    // Parcels: three closed outlines, every fifth with a bulged front, each labelled.
    for (int k = 0; k < 3 && Room(); ++k) {
      double x0 = ox + k * 16.0, y0 = oy + 4.0;
      double w = Mm(random_.Uniform(11, 15)), h = Mm(random_.Uniform(18, 30));
      double bulge = (parcel_ % 5 == 4) ? 0.25 : 0.0;
      std::vector<model::Vertex2> ring{{x0, y0, bulge}, {x0 + w, y0, 0}, {x0 + w, y0 + h, 0},
                                       {x0, y0 + h, 0}};
      RecordId parcel = Counted(model::AddLwPolyline(doc_, "PARCELS", ring, true));
      ++parcel_;
      double area = w * h + (bulge != 0.0 ? BulgeSegmentArea(w, bulge) : 0.0);
      if (Status s = Attach(parcel, "Parcels",
                            {od::Value::Integer(static_cast<int32_t>(parcel_)),
                             od::Value::Character(kOwners[random_.Index(10)]),
                             od::Value::Real(Mm(area)),
                             od::Value::Point({Mm(x0 + w / 2), Mm(y0 + h / 2), 0.0})});
          !s.ok())
        return s;
      if (parcel_ % 4 == 0)
        if (Status s = Attach(parcel, "Zoning", {od::Value::Character(kZones[random_.Index(5)]),
                                                 od::Value::Real(Mm(random_.Uniform(0.3, 2.5)))});
            !s.ok())
          return s;
      if (Room())
        Counted(model::AddText(doc_, "LABELS", Point3{x0 + 1.0, y0 + h / 2, 0}, 1.2,
                               "P-" + std::to_string(parcel_)));
    }
    // Roads: an open polyline along the lot and a connecting line.
    if (Room()) {
      double y = oy + 1.0;
      std::vector<model::Vertex2> axis{{ox, y, 0}, {ox + 20, y + Mm(random_.Uniform(-1, 1)), 0},
                                       {ox + 40, y, 0}, {ox + 60, y, 0}};
      RecordId road = Counted(model::AddLwPolyline(doc_, "ROADS", axis, false));
      const char* name = kRoads[random_.Index(8)];
      const char* klass = kRoadClasses[random_.Index(4)];
      if (Status s = Attach(road, "Roads", {od::Value::Character(name), od::Value::Character(klass),
                                            od::Value::Real(60.0)});
          !s.ok())
        return s;
      // Every third road carries two records of the same table (a renamed stretch).
      if (lot % 3 == 0)
        if (Status s = Attach(road, "Roads", {od::Value::Character(kRoads[random_.Index(8)]),
                                              od::Value::Character(klass), od::Value::Real(30.0)});
            !s.ok())
          return s;
    }
    if (Room()) {
      RecordId link = Counted(model::AddLine(doc_, "ROADS", Point3{ox + 59, oy + 1, 0},
                                             Point3{ox + 59, oy + 59, 0}));
      if (Status s = Attach(link, "Roads", {od::Value::Character(kRoads[random_.Index(8)]),
                                            od::Value::Character("service"), od::Value::Real(58.0)});
          !s.ok())
        return s;
    }
    // Pipes and manholes.
    for (int k = 0; k < 2 && Room(); ++k) {
      RecordId pipe = k == 0
          ? model::AddLine(doc_, "PIPES", Point3{ox, oy + 2.5, -1.5}, Point3{ox + 30, oy + 2.5, -1.6})
          : model::AddLwPolyline(doc_, "PIPES", {{ox + 30, oy + 2.5, 0}, {ox + 45, oy + 3, 0},
                                                 {ox + 60, oy + 2.5, 0}}, false);
      Counted(pipe);
      if (Status s = Attach(pipe, "Pipes", {od::Value::Character(kMaterials[random_.Index(4)]),
                                            od::Value::Integer(150 + 50 * static_cast<int>(random_.Index(6)))});
          !s.ok())
        return s;
    }
    for (int k = 0; k < 2 && Room(); ++k) {
      ++manhole_;
      std::string id = "MH-" + std::to_string(manhole_);
      double depth = Mm(random_.Uniform(1.2, 4.5));
      const char* block = manhole_ % 10 == 0 ? "*U1" : "MANHOLE";
      RecordId mh = Counted(model::AddBlockReference(
          doc_, block, Point3{ox + k * 30.0, oy + 2.5, 0}, 1.0, 0.0, "MANHOLES",
          {{"ID", id}, {"DEPTH", model::FormatNumber(depth)}}));
      if (Status s = Attach(mh, "Manholes", {od::Value::Character(id), od::Value::Real(depth)}); !s.ok())
        return s;
    }
    // Trees, survey points (one on the frozen layer), a contour and a note.
    for (int k = 0; k < 3 && Room(); ++k) {
      double r = Mm(random_.Uniform(1.5, 4.0));
      RecordId tree = Counted(model::AddCircle(
          doc_, "TREES", Point3{Mm(ox + random_.Uniform(2, 58)), oy + 55.0, 0}, r));
      if (Status s = Attach(tree, "Trees", {od::Value::Character(kSpecies[random_.Index(5)]),
                                            od::Value::Real(Mm(r * 4))});
          !s.ok())
        return s;
    }
    for (int k = 0; k < 2 && Room(); ++k) {
      Point3 at{Mm(ox + random_.Uniform(0, 60)), Mm(oy + random_.Uniform(0, 60)),
                Mm(random_.Uniform(90, 110))};
      RecordId point = Counted(model::AddPoint(doc_, k == 0 ? "SURVEY" : "ARCHIVE", at));
      if (k == 0)
        if (Status s = Attach(point, "TPMNODE_1", {od::Value::Integer(static_cast<int32_t>(lot))}); !s.ok())
          return s;
    }
    if (Room()) {
      double z = 100.0 + static_cast<double>(lot % 10);
      std::vector<Point3> control;
      for (int k = 0; k < 6; ++k)
        control.push_back({ox + k * 12.0, Mm(oy + 30 + random_.Uniform(-8, 8)), z});
      RecordId contour = Counted(model::AddSpline(doc_, "CONTOURS", control));
      if (Status s = Attach(contour, "Contours", {od::Value::Real(z)}); !s.ok()) return s;
    }
    if (Room()) {
      RecordId note = Counted(model::AddText(doc_, "NOTES", Point3{ox + 2, oy + 50, 0}, 0.8,
                                             "check lot " + std::to_string(lot)));
      if (Status s = Attach(note, "Notes", {od::Value::Character("survey again")}); !s.ok()) return s;
    }
    // A few other curves without data.
    if (Room())
      Counted(model::AddArc(doc_, "CURVES", Point3{ox + 50, oy + 45, 0}, 4.0, 15.0, 165.0));
    if (Room())
      Counted(model::AddEllipse(doc_, "CURVES", Point3{ox + 40, oy + 45, 0}, Point3{5, 1, 0}, 0.5,
                                0.0, 6.283185307179586));
    if (Room())
      Counted(model::AddPolyline3d(doc_, "CURVES",
                                   {{ox, oy + 59, 100}, {ox + 20, oy + 59, 101.5},
                                    {ox + 40, oy + 58, 102}}, false));
    return Status::Ok();
  }

  // Area between a chord of length `chord` and its arc of the given bulge.
  static double BulgeSegmentArea(double chord, double bulge) {
    double angle = 4.0 * std::atan(std::fabs(bulge));
    double radius = chord / (2.0 * std::sin(angle / 2.0));
    return radius * radius * (angle - std::sin(angle)) / 2.0;
  }

  model::Document& doc_;
  objectdata::ObjectDataStore od_;
  Random random_;
  size_t budget_;
  size_t count_ = 0;
  size_t parcel_ = 0;
  size_t manhole_ = 0;
};

}  // namespace

Result<std::unique_ptr<model::Document>> GenerateCity(const CityOptions& options) {
  auto doc = model::Document::NewBlank(options.version);
  CityBuilder builder(*doc, options);
  if (Status s = builder.Build(); !s.ok()) return s;
  return doc;
}

}  // namespace veltor::tools
