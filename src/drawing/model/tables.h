// Symbol tables: layers with their states, registered applications, block records and
// plot style names. Names are matched without regard to ASCII case, as CAD programs do.
#pragma once

#include <string>
#include <vector>

#include "drawing/model/document.h"

namespace veltor::model {

struct LayerInfo {
  RecordId id = kNoRecord;
  std::string name;
  bool frozen = false;  // flag 1 of group 70
  bool locked = false;  // flag 4 of group 70
  bool off = false;     // negative color (62)
  bool hidden = false;  // kept in the layer's VELTOR xdata: DXF has no flag for it
  int color = 7;
};

std::vector<LayerInfo> Layers(const Document& doc);
LayerInfo ReadLayer(const Document& doc, RecordId layer);
RecordId FindLayer(const Document& doc, std::string_view name);
// Adds a layer (color 7, Continuous) unless one of that name exists; returns it.
RecordId AddLayer(Document& doc, std::string_view name, int color = 7);
void SetLayerFrozen(Document& doc, RecordId layer, bool frozen);
void SetLayerLocked(Document& doc, RecordId layer, bool locked);
void SetLayerOff(Document& doc, RecordId layer, bool off);
void SetLayerHidden(Document& doc, RecordId layer, bool hidden);

// Adds an APPID table record unless it exists (xdata needs its application registered).
void EnsureAppId(Document& doc, std::string_view name);

// The table head record ("0 TABLE / 2 NAME") and its ENDTAB.
RecordId FindTableHead(const Document& doc, std::string_view table);
RecordId FindTableEnd(const Document& doc, std::string_view table);
// A record of a symbol table by name, or kNoRecord.
RecordId FindTableRecord(const Document& doc, std::string_view table, std::string_view name);
RecordId FindBlockRecord(const Document& doc, std::string_view name);

// The name of the plot style a handle (group 390) points to: the key under which the
// plot style name dictionary holds it. Empty when unknown.
std::string PlotStyleName(const Document& doc, Handle placeholder);

bool EqualsNoCaseAscii(std::string_view a, std::string_view b);

}  // namespace veltor::model
