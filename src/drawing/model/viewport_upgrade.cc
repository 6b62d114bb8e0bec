#include "drawing/model/viewport_upgrade.h"

#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/model/subclass_layout.h"

namespace veltor::model {

namespace {

// The values of an MVIEW list by kind, in file order.
struct MView {
  std::vector<std::string> points;  // 1010/1020/1030 values, three per point
  std::vector<std::string> reals;   // 1040
  std::vector<long long> ints;      // 1070
  std::vector<std::string> frozen;  // 1003 layer names
};

// Splits `source` into the MVIEW list and the tags without the ACAD extended data group.
bool SplitMView(const dxf::Tags& source, MView& view, dxf::Tags& rest) {
  bool in_acad = false, found = false;
  for (size_t i = 0; i < source.size(); ++i) {
    const dxf::Tag& t = source[i];
    if (t.code == 1001) in_acad = t.value == "ACAD";
    if (!in_acad) {
      rest.push_back(t);
      continue;
    }
    if (t.code == 1000 && t.value == "MVIEW") found = true;
    if (!found) continue;
    if (t.code == 1010 || t.code == 1020 || t.code == 1030) view.points.push_back(t.value);
    else if (t.code == 1040) view.reals.push_back(t.value);
    else if (t.code == 1070) view.ints.push_back(ParseInt(t.value));
    else if (t.code == 1003) view.frozen.push_back(t.value);
  }
  // Version, eight settings; two points; seven view and seven snap/grid values.
  return found && view.points.size() >= 6 && view.reals.size() >= 14 && view.ints.size() >= 9;
}

}  // namespace

std::optional<dxf::Tags> UpgradeR12Viewport(const dxf::Tags& source, const LayerHandleOf& layer_handle) {
  MView v;
  dxf::Tags rest;
  if (!SplitMView(source, v, rest)) return std::nullopt;
  std::optional<dxf::Tags> tags = SubclassEntityTags("VIEWPORT", rest);
  if (!tags) return std::nullopt;
  const std::vector<std::string>& r = v.reals;
  // ints: 0 version, 1 view mode, 2 circle zoom, 3 fast zoom, 4 UCS icon, 5 snap, 6 grid,
  // 7 snap style, 8 snap isopair (no counterpart from R13 on), 9 hidden in plot.
  const std::vector<long long>& n = v.ints;
  long long flags = (n[1] & 31) | ((n[4] & 1) ? 32 : 0) | ((n[4] & 2) ? 64 : 0) | (n[3] ? 128 : 0) |
                    (n[5] ? 256 : 0) | (n[6] ? 512 : 0) | (n[7] ? 1024 : 0) |
                    (n.size() > 9 && n[9] ? 2048 : 0);
  dxf::Tags view{{12, r[2]},          {22, r[3]},          {13, r[8]},          {23, r[9]},
                 {14, r[10]},         {24, r[11]},         {15, r[12]},         {25, r[13]},
                 {16, v.points[3]},   {26, v.points[4]},   {36, v.points[5]},   {17, v.points[0]},
                 {27, v.points[1]},   {37, v.points[2]},   {42, r[4]},          {43, r[5]},
                 {44, r[6]},          {45, r[1]},          {50, r[7]},          {51, r[0]},
                 {72, std::to_string(n[2])}};
  for (const std::string& name : v.frozen)
    if (dxf::Handle h = layer_handle(name)) view.push_back({331, dxf::FormatHandle(h)});
  view.push_back({90, std::to_string(flags)});
  view.push_back({1, ""});
  view.push_back({281, "0"});
  view.push_back({71, "0"});
  size_t at = 0;
  while (at < tags->size() && (*tags)[at].code < 1000) ++at;
  tags->insert(tags->begin() + static_cast<long>(at), view.begin(), view.end());
  return tags;
}

}  // namespace veltor::model
