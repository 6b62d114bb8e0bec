// One open drawing of the session and what the session keeps for it: the database and
// project objects over it, the pickfirst and previous selections, and its name.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/embedded_project.h"

namespace veltor::session {

struct SessionDocument {
  SessionDocument(std::unique_ptr<model::Document> document, std::string display_name,
                  ChangeListener& listener)
      : doc(std::move(document)),
        name(std::move(display_name)),
        database(*doc, listener),
        project(*doc, listener) {}

  std::unique_ptr<model::Document> doc;
  std::string name;  // shown to users: the file name, or "Drawing1.dxf" for a new drawing
  EmbeddedDatabase database;
  EmbeddedProject project;
  od::EntityList pickfirst;
  od::EntityList previous;  // the last completed object selection
  // What was tolerated when the drawing was opened: the file's warnings, then damaged Object
  // Data. Shown once, by whoever opened it.
  std::vector<std::string> open_warnings;
};

}  // namespace veltor::session
