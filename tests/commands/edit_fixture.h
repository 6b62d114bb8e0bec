// The editing commands run in the embedded session with the module loaded: prompts answered by
// lines, dialogs and message boxes by scripted answers. Records carry a recognisable text in
// their first column so that tests can tell which ones a command left.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "../drawing/dxf/test_files.h"
#include "../session/session_fixture.h"
#include "../support/scripted_ui.h"
#include "app/veltor_app.h"

namespace veltor::testing {

// Follows object modifications and whether the drawing was locked for writing at each.
class LockWatch : public od::Reactor {
 public:
  explicit LockWatch(session::SessionDocument& doc) : doc_(doc) {}
  void ObjectModified(od::ObjectId) override {
    ++modified;
    if (!doc_.database.locked()) ++modified_unlocked;
  }
  int modified = 0;
  int modified_unlocked = 0;

 private:
  session::SessionDocument& doc_;
};

class EditCommandsTest : public SessionFixture {
 protected:
  EditCommandsTest() {
    session_.SetUi(&ui_);
    session_.LoadModule(app::AcrxEntryPoint);
  }
  ~EditCommandsTest() override { session_.UnloadModules(); }
  void TearDown() override { EXPECT_EQ(ui_.pending(), 0u) << "dialog scripts left unused"; }

  // Runs a command with answers to its prompts; out() then holds what it printed.
  void Run(const std::string& command, std::vector<std::string> answers = {}) {
    Answer(std::move(answers));
    ClearOut();
    EXPECT_TRUE(session_.Execute(command));
  }

  // Attaches a record of `table` whose first column reads `tag`.
  void AttachTagged(od::EntityId entity, const std::string& table, const std::string& tag) {
    Result<od::Record> record = container().NewRecord(table);
    ASSERT_TRUE(record.ok()) << record.message();
    record->values.at(0) = od::Value::Character(tag);
    Status s = container().AddRecord(entity, *record);
    ASSERT_TRUE(s.ok()) << s.message();
  }

  // The entity's records as "TABLE:tag", in host order.
  std::vector<std::string> Tags(od::EntityId entity) {
    std::vector<std::string> tags;
    for (const od::Record& r : container().Records(entity))
      tags.push_back(r.table + ":" + (r.values.empty() ? "" : od::ValueToText(r.values[0])));
    return tags;
  }

  // The active drawing saved to `name` in a scratch folder, as bytes.
  std::string SavedBytes(const std::string& name) {
    std::string path = scratch_.File(name);
    Status s = doc().Save(path);
    EXPECT_TRUE(s.ok()) << s.message();
    return ReadBytes(path);
  }

  // Moves a model space entity to paper space (the active layout).
  void MoveToPaperSpace(od::EntityId entity) {
    model::RecordId r = session::RecordOf(doc(), entity);
    model::Tags& tags = doc().MutableTags(r);
    tags.insert(tags.begin() + 4, dxf::Tag{67, "1"});
    doc().store().at(r).paper_space = true;
  }

  ScriptedUi ui_;
  ScratchDir scratch_;
};

}  // namespace veltor::testing
