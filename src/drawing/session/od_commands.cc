// Object Data by hand: define, change and delete tables (ODTABLE), attach records
// (ODATTACH), edit them (ODEDIT) and detach them (ODDETACH).
#include "drawing/session/host_commands.h"
#include "drawing/session/od_answers.h"
#include "drawing/session/session_document.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/text.h"

namespace veltor::session {

namespace {

od::ObjectDataContainer* ContainerOrSay(Session& s) {
  Result<od::Project*> project = s.ActiveProject();
  if (!project.ok()) {
    s.editor().Refuse("Error: " + project.message());
    return nullptr;
  }
  return &(*project)->Container();
}

void Fail(Session& s, const Status& status) { s.editor().Refuse("Error: " + status.message()); }

// The active drawing's own store: what the module's interface does not show (definitions
// and records that cannot be read).
objectdata::ObjectDataStore& StoreOf(Session& s) { return s.active()->project.container().store(); }

void WarnSkipped(Session& s, size_t skipped) { s.Print(SkippedRecordsWarning(skipped)); }

// Asks for a name until it is usable: Enter (empty) ends; `taken` says why a name is already
// in use ("" when free). Nullopt when cancelled or refused in a script.
template <typename Taken>
std::optional<std::string> AskName(Session& s, const std::string& prompt, Taken taken) {
  for (;;) {
    od::PromptResult<std::string> name = s.Ed().GetString(prompt, true);
    if (name.status != od::PromptStatus::kOk) return std::nullopt;
    if (name.value.empty()) return name.value;
    std::string problem = NameProblem(name.value);
    if (problem.empty()) problem = taken(name.value);
    if (problem.empty()) return name.value;
    if (!s.editor().Refuse("Error: " + problem)) return std::nullopt;
  }
}

// Why a new table cannot take `name` in the active drawing ("" when it can).
std::string TableNameTaken(Session& s, const std::string& name) {
  Status free = StoreOf(s).CheckNameFree(name);
  return free.ok() ? "" : free.message() + ".";
}

std::string ColumnNameTaken(const std::vector<od::ColumnDefinition>& columns, const std::string& name) {
  for (const od::ColumnDefinition& c : columns)
    if (c.name == name) return "column '" + name + "' already exists.";
  return "";
}

// Asks for an existing table's name; "?" lists the tables first.
std::optional<od::TableDefinition> AskTable(Session& s, od::ObjectDataContainer& c,
                                            const std::string& prompt) {
  for (;;) {
    od::PromptResult<std::string> name = s.Ed().GetString(prompt, true);
    if (name.status != od::PromptStatus::kOk || name.value.empty()) return std::nullopt;
    if (name.value == "?") {
      for (const std::string& t : c.TableNames()) s.Print("  " + t + "\n");
      continue;
    }
    Result<od::TableDefinition> def = c.GetTable(name.value);
    if (def.ok()) return *def;
    std::string why = "no table named '" + name.value + "'.";
    for (const auto& damaged : StoreOf(s).DamagedTables())
      if (damaged.name == name.value)
        why = "table '" + name.value + "' cannot be read (" + damaged.reason + "); it is kept as it is.";
    if (!s.editor().Refuse("Error: " + why)) return std::nullopt;
  }
}

// Asks for a value of `value`'s type until one is typed; Enter keeps `value`. False when
// cancelled or refused in a script.
bool AskValue(Session& s, const std::string& prompt, od::Value& value) {
  for (;;) {
    od::PromptResult<std::string> text =
        s.Ed().GetString(prompt + " <" + od::ValueToText(value) + ">: ", true);
    if (text.status != od::PromptStatus::kOk) return false;
    if (text.value.empty()) return true;
    std::string refused = ReadTypedValue(text.value, value);
    if (refused.empty()) return true;
    if (!s.editor().Refuse("Error: " + refused)) return false;
  }
}

std::optional<od::ValueType> AskType(Session& s) {
  for (;;) {
    od::PromptResult<std::string> answer =
        s.Ed().GetString("Type [Integer/Real/Character/Point] <Character>: ", false);
    if (answer.status != od::PromptStatus::kOk) return std::nullopt;
    if (answer.value.empty() || od::MatchesKeyword(answer.value, "character"))
      return od::ValueType::kCharacter;
    if (od::MatchesKeyword(answer.value, "integer")) return od::ValueType::kInteger;
    if (od::MatchesKeyword(answer.value, "real")) return od::ValueType::kReal;
    if (od::MatchesKeyword(answer.value, "point")) return od::ValueType::kPoint;
    if (!s.editor().Refuse("Requires Integer, Real, Character or Point.")) return std::nullopt;
  }
}

// Asks for a new column of a table that has `existing` columns. Nullopt when Enter ended the
// list or the prompts were cancelled; `cancelled` tells the two apart.
std::optional<od::ColumnDefinition> AskColumn(Session& s, const std::string& prompt,
                                              const std::vector<od::ColumnDefinition>& existing,
                                              bool& cancelled) {
  cancelled = true;
  std::optional<std::string> name =
      AskName(s, prompt, [&](const std::string& n) { return ColumnNameTaken(existing, n); });
  if (!name) return std::nullopt;
  if (name->empty()) {
    cancelled = false;
    return std::nullopt;
  }
  od::ColumnDefinition column;
  column.name = *name;
  std::optional<od::ValueType> type = AskType(s);
  if (!type) return std::nullopt;
  column.type = *type;
  column.default_value = od::Value(*type);
  if (!AskValue(s, "Default value", column.default_value)) return std::nullopt;
  od::PromptResult<std::string> description = s.Ed().GetString("Description <>: ", true);
  if (description.status != od::PromptStatus::kOk) return std::nullopt;
  column.description = description.value;
  cancelled = false;
  return column;
}

// Lists the usable tables, then the definitions that cannot be read, marked as such: they
// are not usable, but a readable name among them is taken.
void ListTables(Session& s, od::ObjectDataContainer& c) {
  std::vector<std::string> names = c.TableNames();
  std::vector<objectdata::ObjectDataStore::DamagedTable> damaged = StoreOf(s).DamagedTables();
  if (names.empty() && damaged.empty()) s.Print("No Object Data tables are defined.\n");
  for (const std::string& name : names) {
    Result<od::TableDefinition> def = c.GetTable(name);
    if (!def.ok()) continue;
    std::string columns = CountOf(static_cast<long>(def->columns.size()), "column", "columns");
    s.Print(od::Format("%s (%s)%s%s\n", name.c_str(), columns.c_str(),
                       def->description.empty() ? "" : ": ", def->description.c_str()));
    for (const od::ColumnDefinition& col : def->columns)
      s.Print(od::Format("  %-20s %-9s default %s\n", col.name.c_str(), od::TypeName(col.type),
                         od::ValueToText(col.default_value).c_str()));
  }
  for (const auto& d : damaged)
    s.Print((d.name.empty() ? "(no readable name)" : d.name) + " [damaged, definition " +
            dxf::FormatHandle(d.handle) + "]: " + d.reason + "; kept as it is\n");
}

void NewTable(Session& s, od::ObjectDataContainer& c) {
  std::optional<std::string> name =
      AskName(s, "Table name: ", [&](const std::string& n) { return TableNameTaken(s, n); });
  if (!name || name->empty()) return;
  od::TableDefinition def;
  def.name = *name;
  od::PromptResult<std::string> description = s.Ed().GetString("Description <>: ", true);
  if (description.status != od::PromptStatus::kOk) return;
  def.description = description.value;
  bool cancelled = false;
  while (auto column = AskColumn(s, "Column name or Enter to finish: ", def.columns, cancelled))
    def.columns.push_back(*column);
  if (cancelled) return;
  if (Status made = c.CreateTable(def); !made.ok()) return Fail(s, made);
  s.Print("Table " + def.name + " defined with " +
          CountOf(static_cast<long>(def.columns.size()), "column", "columns") + ".\n");
}

void ChangeColumns(Session& s, od::ObjectDataContainer& c) {
  auto table = AskTable(s, c, "Table name (? to list): ");
  if (!table) return;
  std::string choice;
  if (!AskUntilAccepted(s, "[Add/Delete/Rename] <Add>: ", false, "Requires Add, Delete or Rename.",
                        [&](const std::string& answer) {
                          choice = answer.empty() ? "add" : answer;
                          return od::MatchesKeyword(choice, "add") || od::MatchesKeyword(choice, "delete") ||
                                 od::MatchesKeyword(choice, "rename");
                        }))
    return;
  Status done;
  if (od::MatchesKeyword(choice, "add")) {
    bool cancelled = false;
    auto column = AskColumn(s, "Column name: ", table->columns, cancelled);
    if (!column) return;
    done = c.AddColumn(table->name, *column);
  } else if (od::MatchesKeyword(choice, "delete")) {
    od::PromptResult<std::string> column = s.Ed().GetString("Column name: ", true);
    if (column.status != od::PromptStatus::kOk || column.value.empty()) return;
    done = c.RemoveColumn(table->name, column.value);
  } else {
    od::PromptResult<std::string> column = s.Ed().GetString("Column name: ", true);
    if (column.status != od::PromptStatus::kOk || column.value.empty()) return;
    std::optional<std::string> to = AskName(s, "New name: ", [&](const std::string& n) {
      return n == column.value ? "" : ColumnNameTaken(table->columns, n);
    });
    if (!to || to->empty()) return;
    done = c.RenameColumn(table->name, column.value, *to);
  }
  if (!done.ok()) return Fail(s, done);
  s.Print("Table " + table->name + " changed.\n");
}

void TableCommand(Session& s) {
  od::ObjectDataContainer* c = ContainerOrSay(s);
  if (!c) return;
  std::string o;
  if (!AskUntilAccepted(s, "Enter an option [New/Columns/Rename/Delete/List] <List>: ", false,
                        "Requires New, Columns, Rename, Delete or List.", [&](const std::string& answer) {
                          o = answer.empty() ? "list" : answer;
                          for (const char* k : {"new", "columns", "rename", "delete", "list"})
                            if (od::MatchesKeyword(o, k)) return true;
                          return false;
                        }))
    return;
  if (od::MatchesKeyword(o, "list")) return ListTables(s, *c);
  if (od::MatchesKeyword(o, "new")) return NewTable(s, *c);
  if (od::MatchesKeyword(o, "columns")) return ChangeColumns(s, *c);
  if (od::MatchesKeyword(o, "rename")) {
    auto table = AskTable(s, *c, "Table name (? to list): ");
    if (!table) return;
    std::optional<std::string> to = AskName(s, "New name: ", [&](const std::string& n) {
      return n == table->name ? "" : TableNameTaken(s, n);
    });
    if (!to || to->empty()) return;
    if (Status done = c->RenameTable(table->name, *to); !done.ok()) return Fail(s, done);
    return s.Print("Table " + table->name + " renamed to " + *to + ".\n");
  }
  if (od::MatchesKeyword(o, "delete")) {
    auto table = AskTable(s, *c, "Table name (? to list): ");
    if (!table) return;
    if (Status done = c->DeleteTable(table->name); !done.ok()) return Fail(s, done);
    return s.Print("Table " + table->name + " deleted with its records.\n");
  }
}

void AttachCommand(Session& s) {
  od::ObjectDataContainer* c = ContainerOrSay(s);
  if (!c) return;
  auto table = AskTable(s, *c, "Table to attach (? to list): ");
  if (!table) return;
  od::PromptResult<od::EntityList> entities = s.Ed().SelectObjects();
  if (entities.status != od::PromptStatus::kOk || entities.value.empty()) return;
  od::Record record;
  record.table = table->name;
  for (const od::ColumnDefinition& column : table->columns) {
    od::Value value = column.default_value;
    if (!AskValue(s, column.name, value)) return;
    record.values.push_back(value);
  }
  long attached = 0;
  for (od::EntityId id : entities.value) {
    // An object whose Object Data cannot be read is left as it is; the others still get it.
    if (Status done = c->AddRecord(id, record); !done.ok()) {
      if (c->DamagedRecordCount(id) == 0) return Fail(s, done);
      s.Print("Warning: " + done.message() + ".\n");
      continue;
    }
    ++attached;
  }
  s.Print("Attached a record of " + table->name + " to " + CountOf(attached, "object", "objects") + ".\n");
}

void EditCommand(Session& s) {
  od::ObjectDataContainer* c = ContainerOrSay(s);
  if (!c) return;
  od::PromptResult<od::EntityId> entity = s.Ed().GetEntity("Select object: ");
  if (entity.status != od::PromptStatus::kOk) return;
  std::vector<od::Record> records = c->Records(entity.value);
  WarnSkipped(s, c->DamagedRecordCount(entity.value));
  if (records.empty()) return s.Print("The object has no readable Object Data.\n");
  for (size_t i = 0; i < records.size(); ++i) s.Print(od::Format("  %i  %s\n", static_cast<int>(i + 1), records[i].table.c_str()));
  size_t index = 0;
  if (records.size() > 1) {
    od::PromptResult<int> n = s.Ed().GetInt("Record number <1>: ");
    if (n.status == od::PromptStatus::kCancel) return;
    if (n.status == od::PromptStatus::kOk) {
      if (n.value < 1 || static_cast<size_t>(n.value) > records.size())
        return (void)s.editor().Refuse("Error: no such record.");
      index = static_cast<size_t>(n.value - 1);
    }
  }
  od::Record record = records[index];
  Result<od::TableDefinition> def = c->GetTable(record.table);
  if (!def.ok()) return Fail(s, def.status());
  int changed = 0;
  for (;;) {
    od::PromptResult<std::string> column = s.Ed().GetString("Column to change or Enter to finish: ", true);
    if (column.status != od::PromptStatus::kOk) return;
    if (column.value.empty()) break;
    int at = def->ColumnIndex(column.value);
    if (at < 0 || static_cast<size_t>(at) >= record.values.size()) {
      if (!s.editor().Refuse("Error: no column named '" + column.value + "'.")) return;
      continue;
    }
    if (!AskValue(s, "New value", record.values[static_cast<size_t>(at)])) return;
    ++changed;
  }
  if (changed == 0) return;
  if (Status done = c->UpdateRecord(entity.value, index, record); !done.ok()) return Fail(s, done);
  s.Print("Record updated.\n");
}

// With "*" every record goes, damaged ones too (the user asked for all of them); with a
// table name, damaged records stay and are counted.
void DetachCommand(Session& s) {
  od::ObjectDataContainer* c = ContainerOrSay(s);
  if (!c) return;
  od::PromptResult<std::string> table = s.Ed().GetString("Table to detach or * for all: ", true);
  if (table.status != od::PromptStatus::kOk || table.value.empty()) return;
  od::PromptResult<od::EntityList> entities = s.Ed().SelectObjects();
  if (entities.status != od::PromptStatus::kOk) return;
  bool all = table.value == "*";
  long detached = 0;
  size_t damaged = 0;
  for (od::EntityId id : entities.value) {
    size_t unreadable = c->DamagedRecordCount(id);
    if (all) {
      Result<size_t> removed = s.active()->project.container().RemoveAllRecords(id);
      if (!removed.ok()) return Fail(s, removed.status());
      detached += static_cast<long>(*removed);
      damaged += unreadable;
      continue;
    }
    std::vector<std::string> names = c->RecordTableNames(id);
    for (size_t i = names.size(); i-- > 0;) {
      if (names[i] != table.value) continue;
      if (Status done = c->RemoveRecord(id, i); !done.ok()) return Fail(s, done);
      ++detached;
    }
    damaged += unreadable;
  }
  if (!all) WarnSkipped(s, damaged);
  std::string line = "Detached " + CountOf(detached, "record", "records");
  if (all && damaged > 0) line += " (" + std::to_string(damaged) + " of them damaged)";
  s.Print(line + ".\n");
}

}  // namespace

void RegisterObjectDataCommands(Session& s) {
  AddHostCommand(s, "ODTABLE", od::kCmdModal,
                 "Lists, defines, changes, renames and deletes Object Data tables",
                 [&s] { TableCommand(s); });
  AddHostCommand(s, "ODATTACH", od::kCmdModal, "Attaches a record of a table to objects",
                 [&s] { AttachCommand(s); });
  AddHostCommand(s, "ODEDIT", od::kCmdModal, "Changes the values of an object's record",
                 [&s] { EditCommand(s); });
  AddHostCommand(s, "ODDETACH", od::kCmdModal, "Detaches the records of a table (or all) from objects",
                 [&s] { DetachCommand(s); });
}

}  // namespace veltor::session
