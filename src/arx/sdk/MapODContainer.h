// Object Data: the container of a project, its tables, their definitions, the records attached
// to an entity and the iterator over them. Reference: "Documentation / AutoCAD Map 3D ObjectARX
// SDK", https://aps.autodesk.com/node/3113 (signatures not confirmed; tables and iterators the
// container hands out are owned and deleted by the caller).
#pragma once

#include "MapArxApi.h"

class AcMapODColumnDefinition {
 public:
  AcMapODColumnDefinition();
  const ACHAR* Name() const;
  const ACHAR* Description() const;
  AcMap::EValueType Type() const;
  const AcMapValue& DefaultValue() const;
  Adesk::Boolean SetName(const ACHAR* name);
  Adesk::Boolean SetDescription(const ACHAR* description);
  Adesk::Boolean SetType(AcMap::EValueType type);
  Adesk::Boolean SetDefaultValue(const AcMapValue& value);
};

class AcMapODTableDefinition {
 public:
  AcMapODTableDefinition();
  int Count() const;
  const AcMapODColumnDefinition& Column(int index) const;
  Adesk::Boolean AddColumn(const AcMapODColumnDefinition& column, int index = -1);
  Adesk::Boolean DelColumn(int index);
  Adesk::Boolean SetColumn(const AcMapODColumnDefinition& column, int index);
};

class AcMapODTableRecord {
 public:
  AcMapODTableRecord();
  int Count() const;
  AcMapValue& Value(int index);
  const ACHAR* ODTableName() const;
};

class AcMapODRecordIterator {
 public:
  virtual ~AcMapODRecordIterator();
  Adesk::Boolean Init(AcDbObjectId objId, AcMap::EOpenMode mode,
                      Adesk::Boolean bIgnoreXData = Adesk::kFalse);
  Adesk::Boolean IsDone() const;
  Adesk::Boolean Next();
  Adesk::Boolean GetRecord(AcMapODTableRecord& record) const;
  Adesk::Boolean UpdateRecord(const AcMapODTableRecord& record);
  Adesk::Boolean RemoveRecord();
  int CountRecords() const;
};

class AcMapODTable {
 public:
  virtual ~AcMapODTable();
  const ACHAR* Name() const;
  const ACHAR* Description() const;
  const AcMapODTableDefinition& Definition() const;
  Adesk::Boolean UpdateDefinition(const AcMapODTableDefinition& definition);
  Adesk::Boolean InitRecord(AcMapODTableRecord& record) const;
  Adesk::Boolean AddRecord(AcMapODTableRecord& record, AcDbObjectId objId);
};

class AcMapODContainer {
 public:
  Adesk::Boolean GetODTableNames(AcMapStringArray& names);
  Adesk::Boolean GetODTable(AcMapODTable*& pTable, const ACHAR* name);
  Adesk::Boolean CreateODTable(const ACHAR* name, const AcMapODTableDefinition& definition,
                               const ACHAR* description = nullptr,
                               Adesk::Boolean bXData = Adesk::kFalse);
  Adesk::Boolean RemoveODTable(const ACHAR* name);
  Adesk::Boolean RenameODTable(const ACHAR* oldName, const ACHAR* newName);
  Adesk::Boolean InitRecordIterator(AcMapODRecordIterator*& pIter);
};
