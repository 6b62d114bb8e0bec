#include "ui/command_catalogue.h"

#include "od/application.h"

namespace veltor::ui {

namespace {

constexpr int kDefaultFlags = od::kCmdTransparent | od::kCmdUsePickSet | od::kCmdRedraw;

}  // namespace

const std::vector<CommandRow>& CommandRows() {
  // Every command but VELTOR_LOAD_DEFINITION is transparent, uses the pickfirst set and
  // redraws; that one is modal. "Covert" is the label users know; it is shown as it stands.
  static const std::vector<CommandRow> rows = {
      {"VELTOR_PSEL", kDefaultFlags, nullptr, nullptr, 0,
       "Asks for a point and makes every closed contour around it the pickfirst selection"},
      {"VELTOR_CTL", kDefaultFlags, nullptr, nullptr, 0,
       "Shows the command palette"},
      {"VELTOR_LOAD_DEFINITION", od::kCmdModal, "OD management", "Copy definitions from file", 1,
       "Copies OD table definitions from other drawings"},
      {"VELTOR_HAS_DUPLICATE_OD", kDefaultFlags, "Search OD", "Find entities with duplicate OD", 3,
       "Selects entities that carry the same table twice or more"},
      {"VELTOR_HAS_OD", kDefaultFlags, "Search OD", "Find entities with OD", 2,
       "Selects entities that carry at least one user table record"},
      {"VELTOR_HAS_MULTIPLE_OD", kDefaultFlags, "Search OD", "Find entities with multiple OD", 4,
       "Selects entities that carry more than one user table record"},
      {"VELTOR_HAS_SPECIFIC_OD", kDefaultFlags, "Search OD", "Find entities with specific OD", 6,
       "Selects entities that carry chosen tables"},
      {"VELTOR_REMOVE_DUPLICATE_OD", kDefaultFlags, "Attach/detach OD", "Detach duplicate", 4,
       "Detaches the second and later records of the same table"},
      {"VELTOR_HAS_NO_OD", kDefaultFlags, "Search OD", "Find entities with no OD", 1,
       "Selects entities without any user table record"},
      {"VELTOR_HAS_SPECIFIC_VALUES", kDefaultFlags, "Search OD", "Find entities with specific OD values", 7,
       "Selects entities whose OD values match given values"},
      {"VELTOR_RM", kDefaultFlags, "Attach/detach OD", "Detach specified", 3,
       "Detaches chosen tables from entities"},
      {"VELTOR_RM_ALL", kDefaultFlags, "Attach/detach OD", "Detach all", 2,
       "Detaches all tables from entities"},
      {"VELTOR_COPY_OD", kDefaultFlags, "Copy OD", "Copy OD from reference", 1,
       "Copies OD records of a reference entity"},
      {"VELTOR_COPY_VALUE", kDefaultFlags, "Copy OD", "Copy values from reference", 5,
       "Copies values of a reference entity"},
      {"VELTOR_COPY_OD_VALUE", kDefaultFlags, "Copy OD", "Copy OD/values from reference", 2,
       "Copies records and values"},
      {"VELTOR_COPY_ALL", kDefaultFlags, "Copy OD", "Copy properties/OD from reference", 3,
       "Copies entity properties and records"},
      {"VELTOR_COPY_ALL_VALUE", kDefaultFlags, "Copy OD", "Copy properties/OD/values from reference", 4,
       "Copies properties, records and values"},
      {"VELTOR_ADEATTACHDATA", kDefaultFlags, "Attach/detach OD", "Attach/detach", 1,
       "Attaches a record with chosen values to entities, or detaches a table's records"},
      {"VELTOR_SETTEXT", kDefaultFlags, "Set/edit OD values", "Set from text", 3,
       "Sets values from text entities"},
      {"VELTOR_SETXYZ", kDefaultFlags, "Set/edit OD values", "Set from XYZ", 1,
       "Sets values from coordinates"},
      {"VELTOR_SETID", kDefaultFlags, "Set/edit OD values", "Create IDs", 6,
       "Numbers entities into a column"},
      {"VELTOR_SETPROP", kDefaultFlags, "Set/edit OD values", "Set from geometric properties", 2,
       "Sets values from length/area/volume and other properties"},
      {"VELTOR_REPLACE", kDefaultFlags, "Set/edit OD values", "Replace", 7,
       "Replaces the OD values that match a pattern"},
      {"VELTOR_2POLY", kDefaultFlags, "Modify entities", "Covert to 2D polylines", 1,
       "Converts to 2D polylines keeping OD"},
      {"VELTOR_ADDVAL", kDefaultFlags, "Set/edit OD values", "Add from field in field", 8,
       "Adds one column's value into another"},
      {"VELTOR_ADDVAL_OD2OD", kDefaultFlags, "Set/edit OD values", "Add values from OD to OD", 9,
       "Adds values from one table to another"},
      {"VELTOR_23DPOLY", kDefaultFlags, "Modify entities", "Convert to 3D polylines", 2,
       "Converts to 3D polylines keeping OD"},
      {"VELTOR_RMUNUSED", kDefaultFlags, "OD management", "Remove unused", 4,
       "Removes table definitions that no entity uses"},
      {"VELTOR_STAT", kDefaultFlags, "OD management", "Usage stats", 2,
       "Object Data statistics"},
      {"VELTOR_HAS_NO_SPECIFIC_OD", kDefaultFlags, "Search OD", "Find entities with no specific OD", 5,
       "Selects entities that lack chosen tables"},
      {"VELTOR_TABLE", kDefaultFlags, "", "OD table", 1,
       "Shows the OD table palette"},
      {"VELTOR_BREAK", kDefaultFlags, "Modify entities", "Break", 3,
       "Breaks entities keeping OD"},
      {"VELTOR_ABOUT", kDefaultFlags, "", "About", 2,
       "Shows the About box"},
      {"VELTOR_EXPL", kDefaultFlags, "Export/import", "Explication", 1,
       "Writes a CSV of a table's records with lengths, areas and group totals"},
      {"VELTOR_TRANSLATE", kDefaultFlags, "OD management", "Translate", 3,
       "Translates values by alias files"},
      {"VELTOR_LOAD_ATTRS", kDefaultFlags, "Set/edit OD values", "Set from attributes", 4,
       "Sets values from block attributes"},
      {"VELTOR_STORE_ATTRS", kDefaultFlags, "Set/edit OD values", "Upload to attributes", 5,
       "Writes values into block attributes"},
      {"VELTOR_ATTR_TEMPLATE", kDefaultFlags, nullptr, nullptr, 0,
       "Writes an attribute map template for the chosen block references"},
  };
  return rows;
}

const std::vector<const char*>& PaletteGroups() {
  static const std::vector<const char*> groups = {
      "OD management",      "Search OD",       "Attach/detach OD", "Copy OD",
      "Set/edit OD values", "Modify entities", "Export/import",
  };
  return groups;
}

}  // namespace veltor::ui
