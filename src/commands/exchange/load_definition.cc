#include "commands/exchange/load_definition.h"

#include <optional>
#include <vector>

#include "od/catalogue.h"
#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

constexpr const char* kAliasName = "OBJECT_DATA";

// The attached drawing for the life of the object: detached (after deactivation) and the
// temporary alias removed when it ends, whichever way the worker leaves.
class TemporaryAttachment {
 public:
  explicit TemporaryAttachment(od::Project& project) : project_(project) {}
  ~TemporaryAttachment() {
    if (id_) {
      (void)project_.DeactivateDrawing(*id_);
      (void)project_.DetachDrawing(*id_);
    }
    (void)project_.RemoveDriveAlias(kAliasName);
  }
  TemporaryAttachment(const TemporaryAttachment&) = delete;
  TemporaryAttachment& operator=(const TemporaryAttachment&) = delete;

  // Adds the alias for the path's drive (its result is not checked: attaching says whether
  // the path is reachable), attaches and activates the drawing.
  bool Open(const std::string& path) {
    (void)project_.AddDriveAlias(kAliasName, project_.AliasPathOf(path));
    Result<int> id = project_.AttachDrawing(path);
    if (!id.ok()) return false;
    id_ = *id;
    return project_.ActivateDrawing(*id_).ok();
  }
  int id() const { return id_.value_or(0); }

 private:
  od::Project& project_;
  std::optional<int> id_;
};

// Attaches a default record of every user table named to a temporary point at the origin,
// which makes the container copy each definition it lacks; then erases the point. Tables
// that cannot be read are skipped. False when the point cannot be made.
bool CopyThroughTemporaryPoint(od::Database& db, od::ObjectDataContainer& container,
                               const std::vector<std::string>& tables) {
  Result<od::EntityId> point = db.AddPoint({0, 0, 0});
  if (!point.ok()) return false;
  for (const std::string& table : tables) {
    if (od::IsSystemTableName(table)) continue;
    Result<od::Record> record = container.NewRecord(table);
    if (record.ok()) (void)container.AddRecord(*point, *record);
  }
  return db.Erase(*point).ok();
}

bool Load(od::Host& host, const std::string& path) {
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return false;
  TemporaryAttachment attachment(**project);
  if (!attachment.Open(path)) {
    host.Ed().Print(od::Format(od::Str(od::kStrUnableToOpen), path.c_str()));
    return false;
  }
  Result<std::vector<std::string>> tables = (*project)->AttachedTableNames(attachment.id());
  if (!tables.ok()) return false;
  return CopyThroughTemporaryPoint(*db, (*project)->Container(), *tables);
}

}  // namespace

bool LoadDefinitions(od::Host& host, const std::string& path) {
  bool loaded = Load(host, path);
  if (!loaded) host.Ed().Print(od::Str(od::kStrOperationUnsuccessful));
  host.Ed().Print(od::Str(od::kStrOperationCompleted));
  return loaded;
}

void LoadDefinition(od::CommandContext& context) {
  od::Host& host = context.host();
  std::optional<std::string> path =
      host.Ui().OpenFileDialog(od::Str(od::kStrLoadDefinitionTitle), od::Str(od::kStrDrawingFilter));
  if (!path) return;
  (void)LoadDefinitions(host, *path);
}

}  // namespace veltor::commands
