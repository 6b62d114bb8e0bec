// The project of one drawing in the embedded host: its Object Data container, drive aliases,
// attached drawings and feature classification.
//
// Attached drawings are opened read-only; an activated one lends its table definitions to the
// container (a record of such a table attached here copies the definition into this drawing).
// Classification tags are kept in an XRECORD under the entity's extension dictionary.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/objectdata/od_store.h"
#include "drawing/session/embedded_object_data.h"
#include "od/object_data.h"

namespace veltor::session {

// The key of an entity's feature classification in its extension dictionary.
inline constexpr char kClassificationKey[] = "VELTOR_CLASSIFICATION";

class EmbeddedProject : public od::Project {
 public:
  EmbeddedProject(model::Document& doc, ChangeListener& listener);

  od::ObjectDataContainer& Container() override { return container_; }
  EmbeddedObjectData& container() { return container_; }

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
  struct Attachment {
    od::AttachedDrawing info;
    std::unique_ptr<model::Document> doc;
    std::unique_ptr<objectdata::ObjectDataStore> store;
  };
  Attachment* FindAttachment(int id);
  const Attachment* FindAttachment(int id) const;
  std::optional<od::TableDefinition> FindAttachedTable(const std::string& name) const;

  model::Document& doc_;
  ChangeListener& listener_;
  EmbeddedObjectData container_;
  std::vector<od::DriveAlias> aliases_;
  std::vector<Attachment> attachments_;
  int next_attachment_id_ = 1;
};

}  // namespace veltor::session
