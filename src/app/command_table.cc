#include "app/command_table.h"

#include <string>
#include <unordered_map>

#include "app/shell_commands.h"
#include "app/table_command.h"
#include "commands/edit/add_value_command.h"
#include "commands/edit/attach_detach_command.h"
#include "commands/edit/break_command.h"
#include "commands/edit/copy_commands.h"
#include "commands/edit/detach_all.h"
#include "commands/edit/detach_tables.h"
#include "commands/edit/poly_commands.h"
#include "commands/edit/remove_duplicates.h"
#include "commands/edit/remove_unused.h"
#include "commands/edit/replace_values.h"
#include "commands/edit/set_id.h"
#include "commands/edit/set_prop.h"
#include "commands/edit/set_text.h"
#include "commands/edit/set_xyz.h"
#include "commands/exchange/attr_commands.h"
#include "commands/exchange/explication_command.h"
#include "commands/exchange/load_definition.h"
#include "commands/exchange/stat_command.h"
#include "commands/exchange/translate_command.h"
#include "commands/select/find_by_od.h"
#include "commands/select/find_with_tables.h"
#include "commands/select/point_select.h"
#include "commands/select/value_query.h"
#include "od/format.h"
#include "od/string_table.h"
#include "ui/command_catalogue.h"

namespace veltor::app {

void NotAvailable(od::Host& host, const char* command) {
  host.Ed().Print(od::Format(od::Str(od::kStrNotAvailable), command));
}

od::CommandHandler WrapHandler(od::Host& host, const char* name, CommandFn fn) {
  od::Host* h = &host;
  std::string command = name;
  if (!fn) {
    return [h, command] {
      (void)od::RunCommand(*h, command, [](od::CommandContext& c) {
        NotAvailable(c.host(), c.name().c_str());
      });
    };
  }
  return [h, command, fn] { (void)od::RunCommand(*h, command, fn); };
}

namespace {

// The inert commands of the application base: they carry no behaviour.
void MyCommand(od::CommandContext&) {}
void MyPickFirst(od::CommandContext& context) { (void)context.host().Ed().ImpliedSelection(); }
void MySessionCmd(od::CommandContext&) {}

// The handler of each built command; a row of the catalogue without one is not built yet.
CommandFn HandlerOf(const std::string& name) {
  static const std::unordered_map<std::string, CommandFn> handlers = {
      {"VELTOR_PSEL", commands::PointSelect},
      {"VELTOR_CTL", VeltorCtl},
      {"VELTOR_TABLE", VeltorTable},
      {"VELTOR_HAS_DUPLICATE_OD", commands::HasDuplicateOd},
      {"VELTOR_HAS_OD", commands::HasOd},
      {"VELTOR_HAS_MULTIPLE_OD", commands::HasMultipleOd},
      {"VELTOR_HAS_SPECIFIC_OD", commands::HasSpecificOd},
      {"VELTOR_HAS_NO_OD", commands::HasNoOd},
      {"VELTOR_HAS_SPECIFIC_VALUES", commands::HasSpecificValues},
      {"VELTOR_HAS_NO_SPECIFIC_OD", commands::HasNoSpecificOd},
      {"VELTOR_COPY_OD", commands::CopyOd},
      {"VELTOR_COPY_VALUE", commands::CopyValue},
      {"VELTOR_COPY_OD_VALUE", commands::CopyOdValue},
      {"VELTOR_COPY_ALL", commands::CopyAll},
      {"VELTOR_COPY_ALL_VALUE", commands::CopyAllValue},
      {"VELTOR_ADEATTACHDATA", commands::AttachDetachData},
      {"VELTOR_ADDVAL", commands::AddVal},
      {"VELTOR_ADDVAL_OD2OD", commands::AddValOd2Od},
      {"VELTOR_SETXYZ", commands::SetXyz},
      {"VELTOR_SETPROP", commands::SetProp},
      {"VELTOR_SETID", commands::SetId},
      {"VELTOR_SETTEXT", commands::SetText},
      {"VELTOR_STAT", commands::Stat},
      {"VELTOR_LOAD_DEFINITION", commands::LoadDefinition},
      {"VELTOR_EXPL", commands::Explication},
      {"VELTOR_TRANSLATE", commands::Translate},
      {"VELTOR_LOAD_ATTRS", commands::LoadAttrs},
      {"VELTOR_STORE_ATTRS", commands::StoreAttrs},
      {"VELTOR_ATTR_TEMPLATE", commands::AttrTemplate},
      {"VELTOR_REMOVE_DUPLICATE_OD", commands::RemoveDuplicateOd},
      {"VELTOR_RM", commands::Rm},
      {"VELTOR_RM_ALL", commands::RmAll},
      {"VELTOR_REPLACE", commands::Replace},
      {"VELTOR_RMUNUSED", commands::RmUnused},
      {"VELTOR_23DPOLY", commands::To3dPolyline},
      {"VELTOR_2POLY", commands::To2dPolyline},
      {"VELTOR_BREAK", commands::Break},
      {"VELTOR_ABOUT", VeltorAbout},
  };
  auto it = handlers.find(name);
  return it == handlers.end() ? nullptr : it->second;
}

}  // namespace

const std::vector<CommandEntry>& CommandTable() {
  static const std::vector<CommandEntry> table = [] {
    std::vector<CommandEntry> entries;
    for (const ui::CommandRow& row : ui::CommandRows())
      entries.push_back({row.name, row.flags, row.label, row.summary, HandlerOf(row.name)});
    return entries;
  }();
  return table;
}

const std::vector<AutoCommand>& AutoCommands() {
  static const std::vector<AutoCommand> commands = {
      {"MyCommand", "MyCommandLocal", od::kCmdModal, MyCommand},
      {"MyPickFirst", "MyPickFirstLocal", od::kCmdUsePickSet, MyPickFirst},
      {"MySessionCmd", "MySessionCmdLocal", od::kCmdSession, MySessionCmd},
  };
  return commands;
}

}  // namespace veltor::app
