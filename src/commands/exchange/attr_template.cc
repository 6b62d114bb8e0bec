// VELTOR_ATTR_TEMPLATE: a map file template from the selected block references and the
// drawing's tables.
#include <filesystem>
#include <map>
#include <set>

#include "commands/exchange/atomic_file.h"
#include "commands/exchange/attr_commands.h"
#include "commands/exchange/attr_selection.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "od/ui_host.h"

namespace veltor::commands {

namespace {

using TagSet = std::set<std::string, od::LessOrdinalUtf16>;
using BlockTags = std::map<std::string, TagSet, od::LessOrdinalUtf16>;

// Every distinct block among the references with the distinct attribute tags found on its
// references (none for a block whose references carry no attribute).
BlockTags CollectBlockTags(const od::Database& db, const std::vector<BlockReference>& references) {
  BlockTags blocks;
  for (const BlockReference& reference : references) {
    TagSet& tags = blocks[reference.block];
    for (const od::AttributeFacts& attribute : db.Attributes(reference.id)) tags.insert(attribute.tag);
  }
  return blocks;
}

bool AnyTag(const BlockTags& blocks) {
  for (const auto& entry : blocks)
    if (!entry.second.empty()) return true;
  return false;
}

// The template text (UTF-8) and how many tables it lists.
std::string TemplateText(const od::ObjectDataContainer& container, const BlockTags& blocks,
                         int& tables_written) {
  std::string text;
  for (const auto& [block, tags] : blocks)
    for (const std::string& tag : tags)
      text += od::Format(od::Str(od::kStrTemplateBlockLine), block.c_str(), tag.c_str());
  text += "\n";
  tables_written = 0;
  for (const std::string& name : container.TableNames()) {
    if (od::IsSystemTableName(name)) continue;
    Result<od::TableDefinition> table = container.GetTable(name);
    if (!table.ok()) continue;
    for (const od::ColumnDefinition& column : table->columns)
      text += od::Format(od::Str(od::kStrTemplateColumnLine), name.c_str(), column.name.c_str(),
                         od::TypeName(column.type));
    ++tables_written;
  }
  return text;
}

// A name typed without an extension gets the dialog's default one.
std::string WithDefaultExtension(const std::string& path) {
  return std::filesystem::path(path).has_extension() ? path : path + ".txt";
}

}  // namespace

void AttrTemplate(od::CommandContext& context) {
  od::Host& host = context.host();
  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled) return context.Cancel();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return;

  BlockTags blocks = CollectBlockTags(*db, BlockReferencesOf(*db, gathered.entities));
  if (!AnyTag(blocks)) {
    host.Ed().Print(od::Str(od::kStrNoValidEntities));
    return;
  }
  std::optional<std::string> chosen = host.Ui().SaveFileDialog(
      od::Str(od::kStrAttributeTemplateTitle), od::Str(od::kStrTextFilter), "");
  if (!chosen) return context.Cancel();
  const std::string path = WithDefaultExtension(*chosen);

  int tables = 0;
  std::string text = TemplateText((*project)->Container(), blocks, tables);
  if (!WriteFileAtomically(path, db->ToAnsiCodePage(text)).ok()) {
    host.Ui().MessageBox(od::Str(od::kStrAttributeTemplateTitle), od::Format(od::Str(od::kStrUnableToOpen), path.c_str()),
                         od::MessageButtons::kOk);
    return;
  }
  host.Ed().Print(od::Format(od::Str(od::kStrTemplateGenerated),
                             static_cast<int>(blocks.size()), tables));
}

}  // namespace veltor::commands
