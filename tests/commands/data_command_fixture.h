// A session with the module loaded for the tests of the commands that edit Object Data:
// typed tables, records with values, records read back as short texts, dialogs answered by
// control id and the drawing saved to compare bytes.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "../drawing/dxf/test_files.h"
#include "../session/session_fixture.h"
#include "../support/scripted_ui.h"
#include "app/veltor_app.h"
#include "drawing/dxf/record_store.h"

namespace veltor::testing {

class DataCommandTest : public SessionFixture {
 protected:
  DataCommandTest() {
    session_.SetUi(&ui_);
    session_.LoadModule(app::AcrxEntryPoint);
  }
  ~DataCommandTest() override { session_.UnloadModules(); }
  void TearDown() override { EXPECT_EQ(ui_.pending(), 0u) << "dialog scripts left unused"; }

  // A column whose type is that of its default value.
  static od::ColumnDefinition Column(const std::string& name, od::Value default_value) {
    return {name, default_value.type(), "", std::move(default_value)};
  }

  void Define(const std::string& name, std::vector<od::ColumnDefinition> columns) {
    od::TableDefinition def;
    def.name = name;
    def.columns = std::move(columns);
    Status s = container().CreateTable(def);
    ASSERT_TRUE(s.ok()) << s.message();
  }

  void AttachValues(od::EntityId entity, const std::string& table, std::vector<od::Value> values) {
    Status s = container().AddRecord(entity, {table, std::move(values)});
    ASSERT_TRUE(s.ok()) << s.message();
  }

  // The entity's records as "TABLE[v1|v2]", values in their text form.
  std::vector<std::string> Records(od::EntityId entity) {
    std::vector<std::string> texts;
    for (const od::Record& record : container().Records(entity)) {
      std::string text = record.table + "[";
      for (size_t i = 0; i < record.values.size(); ++i)
        text += (i ? "|" : "") + od::ValueToText(record.values[i]);
      texts.push_back(text + "]");
    }
    return texts;
  }

  // Runs a typed command with the pickfirst set `picked` and prompt answers; returns what it
  // printed.
  std::string Run(const std::string& command, od::EntityList picked,
                  std::vector<std::string> answers) {
    sdoc().pickfirst = std::move(picked);
    Answer(std::move(answers));
    ClearOut();
    EXPECT_TRUE(session_.Execute(command));
    return out();
  }

  // The drawing saved now, as bytes.
  std::string Saved(const std::string& name) {
    std::string path = dir_.File(name);
    Status s = doc().Save(path);
    EXPECT_TRUE(s.ok()) << s.message();
    std::ifstream in(path, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }

  // Undoes the last command, which must have changed the drawing: it must then save exactly
  // as `before` (saved just before the command).
  void ExpectUndoRestores(const std::string& before, const std::string& what) {
    ASSERT_TRUE(doc().modified()) << what << " changed nothing";
    Answer({});
    ASSERT_TRUE(session_.Execute("U"));
    EXPECT_EQ(Saved("undone.dxf"), before) << what;
  }

  static std::string Handle(od::EntityId id) { return dxf::FormatHandle(id); }

  ScratchDir dir_;
  ScriptedUi ui_;
};

}  // namespace veltor::testing
