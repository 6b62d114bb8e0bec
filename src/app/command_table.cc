#include "app/command_table.h"

#include "app/shell_commands.h"
#include "commands/select/find_by_od.h"
#include "commands/select/find_with_tables.h"
#include "commands/select/point_select.h"
#include "commands/select/value_query.h"
#include "od/format.h"

namespace veltor::app {

void NotAvailable(od::Host& host, const char* command) {
  host.Ed().Print(od::Format("Error: %s is not available in this build.\n", command));
}

namespace {

// The inert commands of the application base: they carry no behaviour.
void MyCommand(od::Host&) {}
void MyPickFirst(od::Host& host) { (void)host.Ed().ImpliedSelection(); }
void MySessionCmd(od::Host&) {}

}  // namespace

const std::vector<CommandEntry>& CommandTable() {
  // Registration order; every command but VELTOR_LOAD_DEFINITION is transparent, uses the
  // pickfirst set and redraws; that one is modal.
  static const std::vector<CommandEntry> table = {
      {"VELTOR_PSEL", kDefaultFlags, nullptr, "Asks for a point and makes every closed contour around it the pickfirst selection", commands::PointSelect},
      {"VELTOR_CTL", kDefaultFlags, nullptr, "Shows the command palette", VeltorCtl},
      {"VELTOR_LOAD_DEFINITION", od::kCmdModal, "Copy definitions from file", "Copies OD table definitions from other drawings", nullptr},
      {"VELTOR_HAS_DUPLICATE_OD", kDefaultFlags, "Find entities with duplicate OD", "Selects entities that carry the same table twice or more", commands::HasDuplicateOd},
      {"VELTOR_HAS_OD", kDefaultFlags, "Find entities with OD", "Selects entities that carry at least one user table record", commands::HasOd},
      {"VELTOR_HAS_MULTIPLE_OD", kDefaultFlags, "Find entities with multiple OD", "Selects entities that carry more than one user table record", commands::HasMultipleOd},
      {"VELTOR_HAS_SPECIFIC_OD", kDefaultFlags, "Find entities with specific OD", "Selects entities that carry chosen tables", commands::HasSpecificOd},
      {"VELTOR_REMOVE_DUPLICATE_OD", kDefaultFlags, "Detach duplicate", "Detaches the second and later records of the same table", nullptr},
      {"VELTOR_HAS_NO_OD", kDefaultFlags, "Find entities with no OD", "Selects entities without any user table record", commands::HasNoOd},
      {"VELTOR_HAS_SPECIFIC_VALUES", kDefaultFlags, "Find entities with specific OD values", "Selects entities whose OD values match given values", commands::HasSpecificValues},
      {"VELTOR_RM", kDefaultFlags, "Detach specified", "Detaches chosen tables from entities", nullptr},
      {"VELTOR_RM_ALL", kDefaultFlags, "Detach all", "Detaches all tables from entities", nullptr},
      {"VELTOR_COPY_OD", kDefaultFlags, "Copy OD from reference", "Copies OD records of a reference entity", nullptr},
      {"VELTOR_COPY_VALUE", kDefaultFlags, "Copy values from reference", "Copies values of a reference entity", nullptr},
      {"VELTOR_COPY_OD_VALUE", kDefaultFlags, "Copy OD/values from reference", "Copies records and values", nullptr},
      {"VELTOR_COPY_ALL", kDefaultFlags, "Copy properties/OD from reference", "Copies entity properties and records", nullptr},
      {"VELTOR_COPY_ALL_VALUE", kDefaultFlags, "Copy properties/OD/values from reference", "Copies properties, records and values", nullptr},
      {"VELTOR_ADEATTACHDATA", kDefaultFlags, "Attach/detach", "Attach/detach dialog", nullptr},
      {"VELTOR_SETTEXT", kDefaultFlags, "Set from text", "Sets values from text entities", nullptr},
      {"VELTOR_SETXYZ", kDefaultFlags, "Set from XYZ", "Sets values from coordinates", nullptr},
      {"VELTOR_SETID", kDefaultFlags, "Create IDs", "Numbers entities into a column", nullptr},
      {"VELTOR_SETPROP", kDefaultFlags, "Set from geometric properties", "Sets values from length/area/volume and other properties", nullptr},
      {"VELTOR_REPLACE", kDefaultFlags, "Replace", "Replaces values", nullptr},
      {"VELTOR_2POLY", kDefaultFlags, "Covert to 2D polylines", "Converts to 2D polylines keeping OD", nullptr},
      {"VELTOR_ADDVAL", kDefaultFlags, "Add from field in field", "Adds one column's value into another", nullptr},
      {"VELTOR_ADDVAL_OD2OD", kDefaultFlags, "Add values from OD to OD", "Adds values from one table to another", nullptr},
      {"VELTOR_23DPOLY", kDefaultFlags, "Convert to 3D polylines", "Converts to 3D polylines keeping OD", nullptr},
      {"VELTOR_RMUNUSED", kDefaultFlags, "Remove unused", "Removes table definitions that no entity uses", nullptr},
      {"VELTOR_STAT", kDefaultFlags, "Usage stats", "Object Data statistics", nullptr},
      {"VELTOR_HAS_NO_SPECIFIC_OD", kDefaultFlags, "Find entities with no specific OD", "Selects entities that lack chosen tables", commands::HasNoSpecificOd},
      {"VELTOR_TABLE", kDefaultFlags, "OD table", "Shows the OD table palette", nullptr},
      {"VELTOR_BREAK", kDefaultFlags, "Break", "Breaks entities keeping OD", nullptr},
      {"VELTOR_ABOUT", kDefaultFlags, "About", "Shows the About box", VeltorAbout},
      {"VELTOR_EXPL", kDefaultFlags, "Explication", "Explication report", nullptr},
      {"VELTOR_TRANSLATE", kDefaultFlags, "Translate", "Translates values by alias files", nullptr},
      {"VELTOR_LOAD_ATTRS", kDefaultFlags, "Set from attributes", "Sets values from block attributes", nullptr},
      {"VELTOR_STORE_ATTRS", kDefaultFlags, "Upload to attributes", "Writes values into block attributes", nullptr},
      {"VELTOR_ATTR_TEMPLATE", kDefaultFlags, nullptr, "Attribute template", nullptr},
  };
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
