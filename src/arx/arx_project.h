// od::Project over the Map project of one drawing: its Object Data container, the session's
// drive aliases, the project's attached drawings and feature classification.
//
// An attached drawing's id is its position in the project's drawing set plus one: ids of the
// drawings after a detached one move down by one, as the set's own positions do.
#pragma once

#include "arx/arx_object_data.h"
#include "od/object_data.h"

class AcMapProject;

namespace veltor::arx {

class ArxProject : public od::Project {
 public:
  explicit ArxProject(AcMapProject* project);

  od::ObjectDataContainer& Container() override { return container_; }

  std::string AliasPathOf(const std::string& path) const override;
  std::vector<od::DriveAlias> DriveAliases() const override;
  Status AddDriveAlias(const std::string& name, const std::string& path) override;
  Status RemoveDriveAlias(const std::string& name) override;

  Result<int> AttachDrawing(const std::string& path) override;
  Status ActivateDrawing(int id) override;
  Status DeactivateDrawing(int id) override;
  Status DetachDrawing(int id) override;
  std::vector<od::AttachedDrawing> AttachedDrawings() const override;
  Result<std::vector<std::string>> AttachedTableNames(int id) const override;

  std::vector<std::string> ClassificationTags(od::EntityId entity) const override;
  Status Classify(od::EntityId entity, const std::string& tag) override;

 private:
  AcMapProject* project_;
  ArxObjectData container_;
};

}  // namespace veltor::arx
