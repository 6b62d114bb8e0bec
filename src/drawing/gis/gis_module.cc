#include "drawing/gis/gis_module.h"

#include "drawing/gis/gis_commands.h"

extern "C" __attribute__((visibility("default"))) const veltor::gis::GisModule* VeltorGisModule() {
  static const veltor::gis::GisModule module{&veltor::gis::RunGisCommand, &veltor::gis::ExportObjectData,
                                             &veltor::gis::ImportObjectData};
  return &module;
}
