// The module's user-visible strings, by id: what commands print and what dialogs show. Formats
// are printf formats printed as they stand.
//
// Three ranges: 101-180 are the command-line messages of the commands; 900-999 the
// command-line messages of the module itself (a failed or missing command, damaged records
// skipped); 1000 and up
// the titles, labels and texts of dialogs. An id means the same text in every front end, so
// a translated table replaces texts, never ids.
#pragma once

namespace veltor::od {

enum StringId : int {
  kStrUnableToOpen = 101,          // "Error: unable to open '%s'.\n"
  kStrDrawingFilter = 102,
  kStrOperationUnsuccessful = 103,
  kStrOperationCompleted = 104,
  kStrSelected = 105,              // "Selected: %i\n"
  kStrModePrompt = 106,
  kStrFirst = 107,
  kStrLast = 108,
  kStrInvalidParameters = 109,
  kStrCompleted = 110,             // "Completed: %i\n"
  kStrNoObjectsSelected = 111,
  kStrCompletedOutOf = 112,        // "Completed: %i out of %i\n"
  kStrTextFilter = 118,
  kStrSelectObjects = 119,
  kStrCompletedLengthAreaVolume = 120,
  kStrColumnNotFound = 123,
  kStrPrecisionPrompt = 124,
  kStrInvalidPrecision = 125,
  kStrWarning = 128,
  kStrTableNotFound = 131,
  kStrConversionPrecisionPrompt = 144,
  kStrField = 145,
  kStrValue = 146,
  kStrXyFirst = 152,
  kStrXyLast = 153,
  kStrXyCenter = 154,
  kStrZMin = 155,
  kStrZMax = 156,
  kStrZAverage = 157,
  kStrNoDefaultValue = 159,
  kStrStatHeader = 160,
  kStrStatObjects = 161,
  kStrStatNoOd = 162,
  kStrStatWithOd = 163,
  kStrStatDuplicated = 164,
  kStrStatMultiple = 165,
  kStrStatTable = 166,
  kStrStatUnused = 167,
  kStrCompletedRangeMultiple = 168,
  kStrCompletedRange = 169,
  kStrCompletedMultiple = 170,
  kStrDuplicateColumns = 171,
  kStrStatTitle = 175,
  kStrWithSpecificOdTitle = 176,
  kStrWithoutSpecificOdTitle = 177,
  kStrSelectReference = 179,
  kStrDetachAllWarning = 180,

  // --- messages of the module shell ---
  kStrNotAvailable = 900,            // "Error: %s is not available in this build.\n"
  kStrCommandFailed = 901,           // "Error: %s failed: %s\n" (command, reason)
  kStrCommandFailedUnknown = 902,    // "Error: %s failed.\n"
  kStrSkippedDamagedRecord = 903,    // "Warning: 1 damaged record skipped ..."
  kStrSkippedDamagedRecords = 904,   // "Warning: %i damaged records skipped ..."
  kStrRecordNotWritten = 905,        // "Warning: 1 record could not be written: %s\n"
  kStrRecordsNotWritten = 906,       // "Warning: %i records could not be written; the first: %s\n"

  // --- dialog texts ---
  kStrDialogOk = 1000,               // "OK"
  kStrDialogCancel = 1001,           // "Cancel"
  kStrObjectDataTitle = 1002,        // "Object Data"
  kStrTablesLabel = 1003,            // "Tables"
  kStrSelectAllNothing = 1004,       // "Select all/nothing"
  kStrSimultaneous = 1005,           // "Simultaneous"
  kStrValueQueryTitle = 1006,        // "Find entities with specific OD values"
  kStrConditionsLabel = 1007,        // "Conditions"
  kStrExtendedPatterns = 1008,       // "Extended (>, <, <>, *)"
  kStrAboutTitle = 1009,             // "About veltor"
  kStrAboutText = 1010,              // the About box: version and build date ("%s", "%s")

  // --- attach/detach and value-addition dialogs; 1250 and up: what their commands print
  // besides "Completed: %i" ---
  kStrAttachDetachTitle = 1200,      // "Attach/detach OD"
  kStrTableLabel = 1201,             // "Table"
  kStrTypeLabel = 1202,              // "Type"
  kStrValuesLabel = 1203,            // "Values"
  kStrAttach = 1204,                 // "Attach"
  kStrDetach = 1205,                 // "Detach"
  kStrAddValueTitle = 1206,          // "Add from field in field"
  kStrSourceField = 1207,            // "Source field"
  kStrTargetField = 1208,            // "Target field"
  kStrHowToAdd = 1209,               // "How to add"
  kStrAddReplace = 1210,             // "Replace the target with the source"
  kStrAddAppend = 1211,              // "Append the source's text to the target's"
  kStrAddNumbers = 1212,             // "Add the source's number to the target's"
  kStrOdToOdTitle = 1213,            // "Add values from OD to OD"
  kStrSourceTable = 1214,            // "Source table"
  kStrTargetTable = 1215,            // "Target table"
  kStrFieldsLabel = 1216,            // "Fields"
  kStrAttachMissing = 1217,          // "Attach a target record where there is none"
  kStrChooseTable = 1230,            // "%s: choose a table." (control)
  kStrChooseField = 1231,            // "%s: choose a field." (control)
  kStrDoesNotConvert = 1232,         // "%s: \"%s\" does not convert to %s." (field, text, type)
  kStrNeedsNumberField = 1233,       // "%s: adding numbers needs an Integer or Real field."
  kStrSameTables = 1234,             // "%s: choose a table other than the source table."
  kStrNoSuchField = 1235,            // "%s: table %s has no field \"%s\"." (control, table, field)
  kStrNoFieldPaired = 1236,          // "%s: type a source field in at least one row."
  kStrValueNotConverted = 1250,      // "Warning: 1 value could not be converted ..."
  kStrValuesNotConverted = 1251,     // "Warning: %i values could not be converted ..."

  // --- dialogs of the commands that fill columns from geometry, text and numbering; 1350
  // and up: what those commands print besides their result line ---
  kStrSetXyzTitle = 1300,            // "Set OD from object coordinates"
  kStrSetPropTitle = 1301,           // "Set OD from object properties"
  kStrGenerateIdsTitle = 1302,       // "Generate IDs"
  kStrSetTextTitle = 1303,           // "Set OD from text"
  kStrX = 1304,                      // "X"
  kStrY = 1305,                      // "Y"
  kStrZ = 1306,                      // "Z"
  kStrXyFrom = 1307,                 // "XY from"
  kStrZFrom = 1308,                  // "Z from"
  kStrPrecision = 1309,              // "Precision"
  kStrXyPrecision = 1310,            // "XY precision"
  kStrZPrecision = 1311,             // "Z precision"
  kStrLength = 1312,                 // "Length"
  kStrArea = 1313,                   // "Area"
  kStrVolume = 1314,                 // "Volume"
  kStrPrefix = 1315,                 // "Prefix"
  kStrSuffix = 1316,                 // "Suffix"
  kStrFirstNumber = 1317,            // "First"
  kStrTolerance = 1318,              // "Tolerance:"
  kStrSolidNotMeasured = 1350,       // "Warning: the volume of 1 3D solid was not measured..."
  kStrSolidsNotMeasured = 1351,      // "Warning: the volumes of %i 3D solids were not ..."
  // --- definitions from other drawings and the explication report ---
  kStrLoadDefinitionTitle = 1400,    // "Drawing to copy table definitions from"
  kStrExplicationTitle = 1401,       // "Explication report"
  kStrGroupByLabel = 1402,           // "Group by"
  kStrNoGrouping = 1403,             // "(none)"
  kStrExplicationFileTitle = 1404,   // "Explication report file"
  kStrCsvFilter = 1405,              // "CSV files (*.csv)|*.csv||"
  kStrCsvHandle = 1410,              // "Handle": the report's column titles
  kStrCsvType = 1411,                // "Type"
  kStrCsvLayer = 1412,               // "Layer"
  kStrCsvLength = 1413,              // "Length"
  kStrCsvArea = 1414,                // "Area"
  kStrCsvRecords = 1415,             // "Records"
  kStrCsvTotalLength = 1416,         // "Total length"
  kStrCsvTotalArea = 1417,           // "Total area"
  kStrUnableToWrite = 1450,          // "Error: unable to write %s\n" ("PATH: reason")
  // --- translation by alias files: what the command prints, then its dialog ---
  kStrLoadingTableAliases = 1460,    // "Loading table aliases from '%s'\n"
  kStrIncorrectTableAlias = 1461,    // "Error: incorrect table alias '%s'\n"
  kStrTableAliasesLoaded = 1462,     // "%i table aliases loaded\n"
  kStrLoadingFieldAliases = 1463,    // "Loading field aliases from '%s'\n"
  kStrIncorrectFieldAlias = 1464,    // "Error: incorrect field alias '%s'\n"
  kStrFieldAliasesLoaded = 1465,     // "%i field aliases loaded\n"
  kStrLoadingValueAliases = 1466,    // "Loading value aliases from '%s'\n"
  kStrIncorrectValueAlias = 1467,    // "Error: incorrect value alias '%s'\n"
  kStrValueAliasesLoaded = 1468,     // "%i value aliases loaded\n"
  kStrDuplicateDestination = 1469,   // "Error: duplicate destination table '%s'\n"
  kStrDuplicateDestinations = 1470,  // "Error: duplicate destination table(s)\n"
  kStrUpdatedRecords = 1471,         // "Updated %i records with new values\n"
  kStrUpdatedColumns = 1472,         // "Updated %i columns\n"
  kStrTranslateTitle = 1480,         // "VELTOR_TRANSLATE"
  kStrOdNameGroup = 1481,            // "OD name"
  kStrFieldGroup = 1482,             // "Field"
  kStrValuesGroup = 1483,            // "Values"
  kStrNameToAlias = 1484,            // "Name --> Alias"
  kStrAliasToName = 1485,            // "Name <-- Alias"
  kStrTableAliasFile = 1486,         // "Table alias file"
  kStrFieldAliasFile = 1487,         // "Field alias file"
  kStrValueAliasFile = 1488,         // "Value alias file"
  // --- breaking entities ---
  kStrBreakObjectPrompt = 1500,       // "Select object: "
  kStrBreakFirstPointPrompt = 1501,   // "Specify first break point: "
  kStrBreakSecondPointPrompt = 1502,  // "Specify second break point <same point>: "
  kStrBreakUnusableLayer = 1503,      // "the object is on a frozen, hidden, locked or off layer"
  // --- block attributes and Object Data ---
  kStrInvalidMapping = 1550,         // "Error: invalid mapping '%s'\n"
  kStrMapTableNotFound = 1551,       // "Error: table %s not found\n"
  kStrMapColumnNotFound = 1552,      // "Error: column %s not found in table %s\n"
  kStrMappingsLoaded = 1553,         // "%i attribute mappings loaded\n"
  kStrUnableToRead = 1554,           // "Error: unable to read '%s'\n"
  kStrTemplateBlockLine = 1555,      // "%s\t%s\t?TableName\t?ColumnName\n" (block, tag)
  kStrTemplateColumnLine = 1556,     // "?BlockName\t?AttributeName\t%s\t%s\t?%s\n"
  kStrTemplateGenerated = 1557,      // "Generated template for %i block(s), %i table(s)\n"
  kStrNoValidEntities = 1558,        // "No valid entities selected\n"
  kStrDefinitionsLoaded = 1559,      // "Loaded %i definition(s) for %i block reference(s)\n"
  kStrAttributesStored = 1560,       // "Loaded %i attribute(s) for %i block reference(s)\n"
  kStrMapFilter = 1561,              // "Text files (*.txt)|*.txt|All files (*.*)|*.*||"
  kStrAttributeMapTitle = 1562,      // "Attribute map file"
  kStrAttributeTemplateTitle = 1563, // "Attribute map template"
  // --- the OD table palette ---
  kStrTableTitle = 1600,             // "OD table"
  kStrDetachSelectedOd = 1601,       // "Detach selected Object Data?"
  // --- dialog texts of the detach, remove and replace commands ---
  kStrDetachOdTitle = 1100,          // "Detach OD"
  kStrRemoveUnusedTitle = 1101,      // "Remove Unused OD"
  kStrUsedLabel = 1102,              // "Used:"
  kStrUnusedLabel = 1103,            // "Unused:"
  kStrReplaceTitle = 1104,           // "Replace OD values"
  kStrColumnsLabel = 1105,           // "Columns"
  kStrOldValueLabel = 1106,          // "Old value"
  kStrNewValueLabel = 1107,          // "New value"
  kStrReplaceArrow = 1108,           // "-->"
  kStrChooseColumns = 1109,          // refusal of OK without a column
};

// The first ids of the shell's messages and of the dialog texts.
inline constexpr int kFirstShellStringId = 900;
inline constexpr int kFirstDialogStringId = 1000;

// The text of a string id (either range); "" for an id the table does not hold.
const char* Str(int id);
// Every message id of the commands (101-180), ascending.
int StringCount();
int StringIdAt(int index);
// Every id of the shell's messages and the dialog texts (900 and up), ascending.
int DialogStringCount();
int DialogStringIdAt(int index);

}  // namespace veltor::od
