// The host as the module sees it, over the host SDK: the application, the editor, the
// active drawing's database and its Object Data project. The user interface comes from outside
// (the Win32 front end). One ArxHost lives from the module's initialisation to its unload.
#pragma once

#include <cstdint>
#include <memory>

#include "od/host.h"

namespace veltor::arx {

class ArxApplication;
class ArxDatabase;
class ArxEditor;
class ArxProject;

class ArxHost : public od::Host {
 public:
  // `app_id` is the application packet the host passed with kInitAppMsg.
  ArxHost(od::UiHost& ui, void* app_id);
  ~ArxHost() override;
  ArxHost(const ArxHost&) = delete;
  ArxHost& operator=(const ArxHost&) = delete;

  od::Application& App() override;
  od::Editor& Ed() override;
  od::UiHost& Ui() override { return ui_; }
  od::Database* WorkingDatabase() override;
  Result<od::Project*> ActiveProject() override;

 private:
  od::UiHost& ui_;
  std::unique_ptr<ArxApplication> app_;
  std::unique_ptr<ArxEditor> editor_;
  // Rebuilt when the working drawing changes (another document became active, or a new one
  // opened where a closed one was): keyed by the drawing's serial, never reused.
  uint32_t database_of_ = 0;
  std::unique_ptr<ArxDatabase> database_;
  uint32_t project_of_ = 0;
  std::unique_ptr<ArxProject> project_;
};

}  // namespace veltor::arx
