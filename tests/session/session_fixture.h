// A session over drawings built in memory with the real engine, answered by scripted lines,
// with everything it prints collected.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "drawing/model/create.h"
#include "drawing/model/document.h"
#include "drawing/model/tables.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/session.h"

namespace veltor::testing {

class SessionFixture : public ::testing::Test {
 protected:
  SessionFixture() : session_([this](std::string_view text) { out_ += text; }) {
    session_.AddDocument(model::Document::NewBlank("AC1027"), "test.dxf");
    session::RegisterUndoCommands(session_);
  }

  // The lines that answer the next prompts; prompts and answers are echoed into out().
  void Answer(std::vector<std::string> lines) {
    input_ = std::make_unique<session::LinesInput>(std::move(lines),
                                                   [this](const std::string& t) { out_ += t; });
    session_.SetInput(input_.get());
  }

  model::Document& doc() { return *session_.active()->doc; }
  session::SessionDocument& sdoc() { return *session_.active(); }
  od::ObjectDataContainer& container() { return session_.active()->project.Container(); }
  od::Database& db() { return session_.active()->database; }

  od::EntityId AddPoint(const std::string& layer = "0", double x = 0, double y = 0) {
    if (model::FindLayer(doc(), layer) == model::kNoRecord) model::AddLayer(doc(), layer);
    return session::IdOf(doc(), model::AddPoint(doc(), layer, {x, y, 0}));
  }

  od::TableDefinition Table(const std::string& name, std::vector<std::string> columns) {
    od::TableDefinition def;
    def.name = name;
    for (auto& c : columns)
      def.columns.push_back({c, od::ValueType::kCharacter, "", od::Value::Character("")});
    EXPECT_TRUE(container().CreateTable(def).ok());
    return def;
  }

  void Attach(od::EntityId entity, const std::string& table) {
    Result<od::Record> record = container().NewRecord(table);
    ASSERT_TRUE(record.ok()) << record.message();
    Status s = container().AddRecord(entity, *record);
    ASSERT_TRUE(s.ok()) << s.message();
  }

  const std::string& out() const { return out_; }
  void ClearOut() { out_.clear(); }

  std::string out_;
  session::Session session_;
  std::unique_ptr<session::LinesInput> input_;
};

}  // namespace veltor::testing
