#include "arx/arx_host.h"

#include "arx/arx_application.h"
#include "arx/arx_database.h"
#include "arx/arx_editor.h"
#include "arx/arx_project.h"
#include "arx/object_ids.h"

#include <MapArxApi.h>
#include <dbapserv.h>

namespace veltor::arx {

ArxHost::ArxHost(od::UiHost& ui, void* app_id)
    : ui_(ui), app_(std::make_unique<ArxApplication>(app_id)),
      editor_(std::make_unique<ArxEditor>()) {}

ArxHost::~ArxHost() = default;

od::Application& ArxHost::App() { return *app_; }

od::Editor& ArxHost::Ed() { return *editor_; }

od::Database* ArxHost::WorkingDatabase() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  AcDbDatabase* db = services ? services->workingDatabase() : nullptr;
  if (!db) return nullptr;
  uint32_t serial = OpenDrawings().Register(db);
  if (serial != database_of_ || !database_) {
    database_ = std::make_unique<ArxDatabase>(db);
    database_of_ = serial;
  }
  return database_.get();
}

Result<od::Project*> ArxHost::ActiveProject() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  AcDbDatabase* db = services ? services->workingDatabase() : nullptr;
  if (!db) return Status::Error("project: no drawing is open");
  uint32_t serial = OpenDrawings().Register(db);
  if (serial != project_of_ || !project_) {
    AcMapSession* session = AcMapGetSession();
    AcMapProject* project = nullptr;
    if (!session || !session->GetProject(project, db) || !project)
      return Status::Error("project: the drawing cannot hold Object Data");
    project_ = std::make_unique<ArxProject>(project);
    project_of_ = serial;
  }
  return static_cast<od::Project*>(project_.get());
}

}  // namespace veltor::arx
