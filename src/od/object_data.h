// Object Data as the module sees it: table definitions, the records attached to entities,
// the project around the active drawing (drive aliases, attached drawings) and feature
// classification.
#pragma once

#include <string>
#include <vector>

#include "od/ids.h"
#include "od/status.h"
#include "od/value.h"

namespace veltor::od {

struct ColumnDefinition {
  std::string name;
  ValueType type = ValueType::kCharacter;
  std::string description;
  Value default_value;  // of `type`
};

struct TableDefinition {
  std::string name;
  std::string description;
  std::vector<ColumnDefinition> columns;

  // The index of the column named exactly `column`, or -1.
  int ColumnIndex(const std::string& column) const;
};

// One row of one table attached to one entity: one value per column, in definition order.
struct Record {
  std::string table;
  std::vector<Value> values;
};

// The table names of an entity's records, in host order, and how many of its records the
// host keeps but cannot read.
struct RecordNames {
  std::vector<std::string> tables;
  size_t damaged = 0;
};

// The Object Data container of one drawing. Table names are case-sensitive. An index of a
// record is its position among the entity's records in host order (0-based).
class ObjectDataContainer {
 public:
  virtual ~ObjectDataContainer() = default;

  // Every table defined in the drawing, in container order.
  virtual std::vector<std::string> TableNames() const = 0;
  // The definition of a table of this drawing or, failing that, of an activated attached
  // drawing.
  virtual Result<TableDefinition> GetTable(const std::string& name) const = 0;

  // The records of an entity, in host order; empty for an entity without records or one that
  // cannot be opened.
  virtual std::vector<Record> Records(EntityId entity) const = 0;
  // Only the table names of those records, in the same order (cheaper than Records).
  virtual std::vector<std::string> RecordTableNames(EntityId entity) const = 0;
  // The records of `tables` on the entity, in host order, and in `damaged` the number of its
  // records (of any table) that cannot be read. A query over a whole drawing calls this once
  // per entity; a host overrides it when it can read both in one pass (this default reads
  // Records and DamagedRecordCount).
  virtual std::vector<Record> RecordsOf(EntityId entity, const std::vector<std::string>& tables,
                                        size_t& damaged) const;
  // Records of the entity that the host keeps but cannot read (damaged in the drawing).
  // Records, RecordTableNames and record indexes leave them out; a command that reads records
  // says how many it skipped.
  virtual size_t DamagedRecordCount(EntityId entity) const = 0;
  // What RecordTableNames and DamagedRecordCount answer, for a walk over many entities. A
  // host that can read both at once overrides this default, which asks twice.
  virtual RecordNames ReadRecordNames(EntityId entity) const;

  // Attaches a record after the entity's existing records. A record of a table that only an
  // activated attached drawing defines first copies that definition into this drawing.
  virtual Status AddRecord(EntityId entity, const Record& record) = 0;
  virtual Status UpdateRecord(EntityId entity, size_t index, const Record& record) = 0;
  virtual Status RemoveRecord(EntityId entity, size_t index) = 0;
  // Removes the records at `indexes` (counted before any removal; order and repeats do not
  // matter) as one change. A host that can do it at once fails without removing any; this
  // default removes them one by one from the last and stops at the first failure.
  virtual Status RemoveRecords(EntityId entity, std::vector<size_t> indexes);
  // A record of `table` holding the columns' default values.
  virtual Result<Record> NewRecord(const std::string& table) const = 0;

  virtual Status CreateTable(const TableDefinition& definition) = 0;
  // Deletes the table with all its records.
  virtual Status DeleteTable(const std::string& name) = 0;
  virtual Status RenameTable(const std::string& name, const std::string& new_name) = 0;
  virtual Status AddColumn(const std::string& table, const ColumnDefinition& column) = 0;
  virtual Status RemoveColumn(const std::string& table, const std::string& column) = 0;
  virtual Status RenameColumn(const std::string& table, const std::string& column,
                              const std::string& new_name) = 0;
};

// A drawing attached to the project by path.
struct AttachedDrawing {
  int id = 0;
  std::string path;
  bool active = false;
};

struct DriveAlias {
  std::string name;
  std::string path;
};

// The project of the active drawing: its Object Data, drive aliases and attached drawings,
// and the feature classification of its entities.
class Project {
 public:
  virtual ~Project() = default;

  virtual ObjectDataContainer& Container() = 0;

  // --- drive aliases ---
  // The alias path a file path is reached through: the part up to and including the first
  // ":" ("D:"), "/" for an absolute POSIX path, "" when there is none (a "\\server" path).
  virtual std::string AliasPathOf(const std::string& path) const = 0;
  virtual std::vector<DriveAlias> DriveAliases() const = 0;
  // Adds an alias or replaces the path of an existing one.
  virtual Status AddDriveAlias(const std::string& name, const std::string& path) = 0;
  virtual Status RemoveDriveAlias(const std::string& name) = 0;

  // --- attached drawings ---
  // Attaches a drawing by full path; fails when no drive alias reaches the path or the
  // drawing cannot be read.
  virtual Result<int> AttachDrawing(const std::string& path) = 0;
  virtual Status ActivateDrawing(int id) = 0;
  virtual Status DeactivateDrawing(int id) = 0;
  virtual Status DetachDrawing(int id) = 0;
  virtual std::vector<AttachedDrawing> AttachedDrawings() const = 0;
  // All table names of an attached drawing, in its container order.
  virtual Result<std::vector<std::string>> AttachedTableNames(int id) const = 0;

  // --- feature classification ---
  // The classification tags of an entity, in the order they were given.
  virtual std::vector<std::string> ClassificationTags(EntityId entity) const = 0;
  // Gives the entity the classification `tag` (an entity has at most one feature class: the
  // tag replaces any earlier one).
  virtual Status Classify(EntityId entity, const std::string& tag) = 0;
};

}  // namespace veltor::od
