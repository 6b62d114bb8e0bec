// A host that passes every call to another host, except where a test asks for a fault:
// entities that cannot be opened, Object Data writes that fail after a number of successes,
// a drawing without an Object Data project, a document lock that is refused. Commands run
// against it show what a user sees when the host says no, and that nothing is half-written.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "od/host.h"

namespace veltor::testing {

struct Faults {
  std::set<od::EntityId> unopenable;
  // Object Data writes (records, tables, columns, classification) that succeed before every
  // further one fails; -1 never fails.
  int writes_before_failure = -1;
  bool project_missing = false;
  bool lock_refused = false;
};

inline const char kInjected[] = "refused by the host (injected fault)";

class FaultyContainer : public od::ObjectDataContainer {
 public:
  FaultyContainer(od::ObjectDataContainer& inner, Faults& faults) : in_(inner), f_(faults) {}

  int writes_done() const { return writes_done_; }

  std::vector<std::string> TableNames() const override { return in_.TableNames(); }
  Result<od::TableDefinition> GetTable(const std::string& name) const override {
    return in_.GetTable(name);
  }
  std::vector<od::Record> Records(od::EntityId e) const override {
    return Closed(e) ? std::vector<od::Record>() : in_.Records(e);
  }
  std::vector<od::Record> RecordsOf(od::EntityId e, const std::vector<std::string>& tables,
                                    size_t& damaged) const override {
    damaged = 0;
    return Closed(e) ? std::vector<od::Record>() : in_.RecordsOf(e, tables, damaged);
  }
  std::vector<std::string> RecordTableNames(od::EntityId e) const override {
    return Closed(e) ? std::vector<std::string>() : in_.RecordTableNames(e);
  }
  size_t DamagedRecordCount(od::EntityId e) const override {
    return Closed(e) ? 0 : in_.DamagedRecordCount(e);
  }
  Status AddRecord(od::EntityId e, const od::Record& r) override {
    if (Status s = Write(e); !s.ok()) return s;
    return in_.AddRecord(e, r);
  }
  Status UpdateRecord(od::EntityId e, size_t index, const od::Record& r) override {
    if (Status s = Write(e); !s.ok()) return s;
    return in_.UpdateRecord(e, index, r);
  }
  Status RemoveRecord(od::EntityId e, size_t index) override {
    if (Status s = Write(e); !s.ok()) return s;
    return in_.RemoveRecord(e, index);
  }
  Result<od::Record> NewRecord(const std::string& table) const override {
    return in_.NewRecord(table);
  }
  Status CreateTable(const od::TableDefinition& d) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.CreateTable(d);
  }
  Status DeleteTable(const std::string& name) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.DeleteTable(name);
  }
  Status RenameTable(const std::string& name, const std::string& new_name) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.RenameTable(name, new_name);
  }
  Status AddColumn(const std::string& table, const od::ColumnDefinition& c) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.AddColumn(table, c);
  }
  Status RemoveColumn(const std::string& table, const std::string& column) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.RemoveColumn(table, column);
  }
  Status RenameColumn(const std::string& table, const std::string& column,
                      const std::string& new_name) override {
    if (Status s = Write(); !s.ok()) return s;
    return in_.RenameColumn(table, column, new_name);
  }

  bool Closed(od::EntityId e) const { return f_.unopenable.count(e) > 0; }
  // Counts a write, or refuses it once the allowance is spent.
  Status Write(od::EntityId e = od::kNullId) {
    if (e != od::kNullId && Closed(e)) return Status::Error("the entity cannot be opened");
    if (f_.writes_before_failure >= 0 && writes_done_ >= f_.writes_before_failure)
      return Status::Error(std::string("Object Data write ") + kInjected);
    ++writes_done_;
    return Status::Ok();
  }

 private:
  od::ObjectDataContainer& in_;
  Faults& f_;
  int writes_done_ = 0;
};

class FaultyProject : public od::Project {
 public:
  FaultyProject(od::Project& inner, Faults& faults)
      : in_(inner), f_(faults), container_(inner.Container(), faults) {}

  FaultyContainer& Container() override { return container_; }
  std::string AliasPathOf(const std::string& path) const override { return in_.AliasPathOf(path); }
  std::vector<od::DriveAlias> DriveAliases() const override { return in_.DriveAliases(); }
  Status AddDriveAlias(const std::string& name, const std::string& path) override {
    return in_.AddDriveAlias(name, path);
  }
  Status RemoveDriveAlias(const std::string& name) override { return in_.RemoveDriveAlias(name); }
  Result<int> AttachDrawing(const std::string& path) override { return in_.AttachDrawing(path); }
  Status ActivateDrawing(int id) override { return in_.ActivateDrawing(id); }
  Status DeactivateDrawing(int id) override { return in_.DeactivateDrawing(id); }
  Status DetachDrawing(int id) override { return in_.DetachDrawing(id); }
  std::vector<od::AttachedDrawing> AttachedDrawings() const override {
    return in_.AttachedDrawings();
  }
  Result<std::vector<std::string>> AttachedTableNames(int id) const override {
    return in_.AttachedTableNames(id);
  }
  std::vector<std::string> ClassificationTags(od::EntityId e) const override {
    return container_.Closed(e) ? std::vector<std::string>() : in_.ClassificationTags(e);
  }
  Status Classify(od::EntityId e, const std::string& tag) override {
    if (Status s = container_.Write(e); !s.ok()) return s;
    return in_.Classify(e, tag);
  }

 private:
  od::Project& in_;
  Faults& f_;
  FaultyContainer container_;
};

class FaultyDatabase : public od::Database {
 public:
  FaultyDatabase(od::Database& inner, Faults& faults) : in_(inner), f_(faults) {}

  od::EntityList ModelSpaceEntities() const override {
    od::EntityList all = in_.ModelSpaceEntities(), open;
    for (od::EntityId e : all)
      if (!Closed(e)) open.push_back(e);
    return open;
  }
  bool CanOpen(od::EntityId e) const override { return !Closed(e) && in_.CanOpen(e); }
  od::ObjectId LayerOf(od::EntityId e) const override { return Closed(e) ? od::kNullId : in_.LayerOf(e); }
  std::string EntityType(od::EntityId e) const override { return Closed(e) ? "" : in_.EntityType(e); }
  std::string EntityClass(od::EntityId e) const override { return Closed(e) ? "" : in_.EntityClass(e); }
  std::string EntityHandle(od::EntityId e) const override { return Closed(e) ? "" : in_.EntityHandle(e); }
  od::EntityId LastEntity() const override { return in_.LastEntity(); }
  std::vector<od::LayerInfo> Layers() const override { return in_.Layers(); }
  od::ObjectId FindLayer(const std::string& name) const override { return in_.FindLayer(name); }
  std::optional<od::Box3> GeomExtents(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.GeomExtents(e);
  }
  std::optional<od::VertexList> Vertices(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.Vertices(e);
  }
  std::optional<od::VertexList> Flatten(od::EntityId e, int precision) const override {
    return Closed(e) ? std::nullopt : in_.Flatten(e, precision);
  }
  bool IsClosedCurve(od::EntityId e) const override { return !Closed(e) && in_.IsClosedCurve(e); }
  std::optional<double> Length(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.Length(e);
  }
  std::optional<double> Area(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.Area(e);
  }
  std::optional<od::Point3> InsertionPoint(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.InsertionPoint(e);
  }
  std::optional<std::string> EffectiveBlockName(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.EffectiveBlockName(e);
  }
  std::vector<od::AttributeFacts> Attributes(od::EntityId e) const override {
    return Closed(e) ? std::vector<od::AttributeFacts>() : in_.Attributes(e);
  }
  Status SetAttributeText(od::ObjectId attribute, const std::string& text) override {
    if (Closed(attribute)) return Status::Error("the attribute cannot be opened");
    return in_.SetAttributeText(attribute, text);
  }
  std::optional<od::TextFacts> Text(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.Text(e);
  }
  std::optional<double> SolidVolume(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.SolidVolume(e);
  }
  od::EntityList EntitiesInBox(const od::Box3& box) const override {
    od::EntityList found = in_.EntitiesInBox(box), open;
    for (od::EntityId e : found)
      if (!Closed(e)) open.push_back(e);
    return open;
  }
  std::string ToAnsiCodePage(const std::string& utf8) const override { return in_.ToAnsiCodePage(utf8); }
  std::string FromAnsiCodePage(const std::string& bytes) const override {
    return in_.FromAnsiCodePage(bytes);
  }
  std::optional<int> GetIntVar(const std::string& name) const override { return in_.GetIntVar(name); }
  Status SetIntVar(const std::string& name, int value) override { return in_.SetIntVar(name, value); }
  Result<od::EntityId> AddPoint(const od::Point3& at) override { return in_.AddPoint(at); }
  Result<od::EntityId> AddPolyline3d(const std::vector<od::Point3>& points, bool closed) override {
    return in_.AddPolyline3d(points, closed);
  }
  Result<od::EntityId> AddLwPolyline(const std::vector<od::Point3>& points, bool closed,
                                     const od::Point3& normal) override {
    return in_.AddLwPolyline(points, closed, normal);
  }
  Result<od::EntityId> AddBlockReference(const std::string& block, const od::Point3& at,
                                         double scale, const std::string& layer) override {
    return in_.AddBlockReference(block, at, scale, layer);
  }
  Result<od::ObjectId> AddLayer(const std::string& name, long true_color) override {
    return in_.AddLayer(name, true_color);
  }
  bool HasBlock(const std::string& name) const override { return in_.HasBlock(name); }
  Status AddCircleBlock(const std::string& name, const od::Point3& center, double radius) override {
    return in_.AddCircleBlock(name, center, radius);
  }
  std::optional<od::EntityProperties> Properties(od::EntityId e) const override {
    return Closed(e) ? std::nullopt : in_.Properties(e);
  }
  Status CopyProperties(od::EntityId from, od::EntityId to) override {
    if (Closed(from) || Closed(to)) return Status::Error("the entity cannot be opened");
    return in_.CopyProperties(from, to);
  }
  Status CopyGraphicProperties(od::EntityId from, od::EntityId to) override {
    if (Closed(from) || Closed(to)) return Status::Error("the entity cannot be opened");
    return in_.CopyGraphicProperties(from, to);
  }
  Status Erase(od::EntityId e) override {
    if (Closed(e)) return Status::Error("the entity cannot be opened");
    return in_.Erase(e);
  }
  Result<od::EntityList> BreakCurve(od::EntityId e, const od::Point3& first,
                                    const od::Point3& second) override {
    if (Closed(e)) return Status::Error("the entity cannot be opened");
    return in_.BreakCurve(e, first, second);
  }
  Status CopyExtensionData(od::EntityId from, od::EntityId to) override {
    if (Closed(from) || Closed(to)) return Status::Error("the entity cannot be opened");
    return in_.CopyExtensionData(from, to);
  }
  Result<std::unique_ptr<od::WriteLock>> LockForWrite() override {
    if (f_.lock_refused) return Status::Error(std::string("the document lock was ") + kInjected);
    return in_.LockForWrite();
  }

 private:
  bool Closed(od::EntityId e) const { return f_.unopenable.count(e) > 0; }
  od::Database& in_;
  Faults& f_;
};

class FaultyHost : public od::Host {
 public:
  explicit FaultyHost(od::Host& inner) : in_(inner) {}

  Faults faults;
  // Object Data writes that went through to the inner host.
  int writes_done() { return project_ ? project_->Container().writes_done() : 0; }

  od::Application& App() override { return in_.App(); }
  od::Editor& Ed() override { return in_.Ed(); }
  od::UiHost& Ui() override { return in_.Ui(); }
  od::Database* WorkingDatabase() override {
    od::Database* db = in_.WorkingDatabase();
    if (!db) return nullptr;
    if (!database_ || inner_db_ != db) {
      database_ = std::make_unique<FaultyDatabase>(*db, faults);
      inner_db_ = db;
    }
    return database_.get();
  }
  Result<od::Project*> ActiveProject() override {
    if (faults.project_missing)
      return Status::Error(std::string("the drawing's Object Data project was ") + kInjected);
    Result<od::Project*> project = in_.ActiveProject();
    if (!project.ok()) return project;
    if (!project_ || inner_project_ != *project) {
      project_ = std::make_unique<FaultyProject>(**project, faults);
      inner_project_ = *project;
    }
    return static_cast<od::Project*>(project_.get());
  }

 private:
  od::Host& in_;
  std::unique_ptr<FaultyDatabase> database_;
  od::Database* inner_db_ = nullptr;
  std::unique_ptr<FaultyProject> project_;
  od::Project* inner_project_ = nullptr;
};

}  // namespace veltor::testing
