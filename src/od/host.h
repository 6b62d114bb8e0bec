// The host as the module sees it: one object that reaches the application, the active
// drawing and its project, the editor and the user interface.
#pragma once

#include "od/application.h"
#include "od/database.h"
#include "od/editor.h"
#include "od/object_data.h"
#include "od/ui_host.h"

namespace veltor::od {

class Host {
 public:
  virtual ~Host() = default;

  virtual Application& App() = 0;
  virtual Editor& Ed() = 0;
  virtual UiHost& Ui() = 0;
  // The database of the active drawing; nullptr when no drawing is open.
  virtual Database* WorkingDatabase() = 0;
  // The Object Data project of the active drawing; fails when no drawing is open or the
  // drawing cannot hold Object Data.
  virtual Result<Project*> ActiveProject() = 0;
};

}  // namespace veltor::od
