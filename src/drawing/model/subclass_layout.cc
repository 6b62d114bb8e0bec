#include "drawing/model/subclass_layout.h"

#include <algorithm>
#include <string>
#include <vector>

#include "drawing/model/document.h"

namespace veltor::model {

namespace {

// One subclass of a layout: its marker and the group codes that belong under it.
struct Part {
  const char* marker;
  std::vector<int> codes;
};

// The subclasses of a record type in file order. Tags whose code no part lists go to the
// part at `main`.
struct Layout {
  std::vector<Part> parts;
  size_t main = 0;
};

// Properties every entity has, written under "100 AcDbEntity".
bool IsCommonEntityCode(int code) {
  switch (code) {
    case 6: case 8: case 48: case 60: case 62: case 67: case 284: case 370: case 420: case 430:
    case 440:
      return true;
    default:
      return false;
  }
}

// Handles and pointers refer to objects of the source drawing; markers are rebuilt.
bool IsDroppedCode(int code) {
  return code == 0 || code == 5 || code == 100 || code == 105 || (code >= 320 && code <= 369) ||
         (code >= 390 && code <= 399) || code == 480 || code == 481;
}

const char* DimensionSubclass(long long flags) {
  switch (flags & 7) {
    case 1: return "AcDbAlignedDimension";
    case 2: return "AcDb2LineAngularDimension";
    case 3: return "AcDbDiametricDimension";
    case 4: return "AcDbRadialDimension";
    case 5: return "AcDb3PointAngularDimension";
    case 6: return "AcDbOrdinateDimension";
    default: return "AcDbAlignedDimension";  // 0, linear: aligned, then rotated
  }
}

const char* PolylineSubclass(PolylineKind kind) {
  switch (kind) {
    case PolylineKind::k3d: return "AcDb3dPolyline";
    case PolylineKind::kPolygonMesh: return "AcDbPolygonMesh";
    case PolylineKind::kPolyfaceMesh: return "AcDbPolyFaceMesh";
    default: return "AcDb2dPolyline";
  }
}

const char* VertexSubclass(PolylineKind parent, long long flags) {
  switch (parent) {
    case PolylineKind::k3d: return "AcDb3dPolylineVertex";
    case PolylineKind::kPolygonMesh: return "AcDbPolygonMeshVertex";
    // A polyface mesh holds its vertices (flag 64) and then its faces.
    case PolylineKind::kPolyfaceMesh:
      return (flags & 64) ? "AcDbPolyFaceMeshVertex" : "AcDbFaceRecord";
    default: return "AcDb2dVertex";
  }
}

std::optional<Layout> EntityLayout(std::string_view type, const dxf::Tags& source,
                                   PolylineKind parent) {
  if (type == "LINE") return Layout{{{"AcDbLine", {}}}};
  if (type == "POINT") return Layout{{{"AcDbPoint", {}}}};
  if (type == "CIRCLE") return Layout{{{"AcDbCircle", {}}}};
  if (type == "ARC") return Layout{{{"AcDbCircle", {}}, {"AcDbArc", {50, 51}}}};
  if (type == "TEXT") return Layout{{{"AcDbText", {}}, {"AcDbText", {73}}}};
  if (type == "ATTDEF")
    return Layout{{{"AcDbText", {}}, {"AcDbAttributeDefinition", {2, 3, 70, 73, 74, 280}}}};
  if (type == "ATTRIB") return Layout{{{"AcDbText", {}}, {"AcDbAttribute", {2, 70, 73, 74, 280}}}};
  if (type == "SOLID" || type == "TRACE") return Layout{{{"AcDbTrace", {}}}};
  if (type == "3DFACE") return Layout{{{"AcDbFace", {}}}};
  if (type == "SHAPE") return Layout{{{"AcDbShape", {}}}};
  if (type == "VIEWPORT") return Layout{{{"AcDbViewport", {}}}};
  if (type == "INSERT") return Layout{{{"AcDbBlockReference", {}}}};
  if (type == "SEQEND") return Layout{};
  if (type == "BLOCK") return Layout{{{"AcDbBlockBegin", {}}}};
  if (type == "ENDBLK") return Layout{{{"AcDbBlockEnd", {}}}};
  if (type == "POLYLINE")
    return Layout{{{PolylineSubclass(PolylineKindOf(TagInt(source, 70, 0))), {}}}};
  if (type == "VERTEX")
    return Layout{{{"AcDbVertex", {-1}}, {VertexSubclass(parent, TagInt(source, 70, 0)), {}}}, 1};
  if (type == "DIMENSION") {
    long long flags = TagInt(source, 70, 0);
    Layout layout{{{"AcDbDimension", {}}, {DimensionSubclass(flags), {13, 14, 15, 16, 40, 50, 52}}}};
    if ((flags & 7) == 0) layout.parts.push_back({"AcDbRotatedDimension", {-1}});
    return layout;
  }
  // Types of R13 and later that files without a header sometimes hold: one subclass each.
  if (type == "LWPOLYLINE") return Layout{{{"AcDbPolyline", {}}}};
  if (type == "ELLIPSE") return Layout{{{"AcDbEllipse", {}}}};
  if (type == "SPLINE") return Layout{{{"AcDbSpline", {}}}};
  if (type == "MTEXT") return Layout{{{"AcDbMText", {}}}};
  if (type == "RAY") return Layout{{{"AcDbRay", {}}}};
  if (type == "XLINE") return Layout{{{"AcDbXline", {}}}};
  return std::nullopt;
}

// Calls fn(tag) for each data tag of `source` (not the dropped ones, not inside "102 {...}"
// groups), then xdata(tag) for each tag from the first 1001 on.
template <typename Data, typename Xdata>
void SplitTags(const dxf::Tags& source, Data fn, Xdata xdata) {
  bool in_group = false;
  bool in_xdata = false;
  for (const dxf::Tag& t : source) {
    if (t.code == 1001) in_xdata = true;
    if (in_xdata) {
      xdata(t);
      continue;
    }
    if (t.code == 102) {
      in_group = !t.value.empty() && t.value[0] == '{';
      continue;
    }
    if (in_group || IsDroppedCode(t.code)) continue;
    fn(t);
  }
}

}  // namespace

PolylineKind PolylineKindOf(long long flags) {
  if (flags & 64) return PolylineKind::kPolyfaceMesh;
  if (flags & 16) return PolylineKind::kPolygonMesh;
  if (flags & 8) return PolylineKind::k3d;
  return PolylineKind::k2d;
}

std::optional<dxf::Tags> SubclassEntityTags(std::string_view type, const dxf::Tags& source,
                                            PolylineKind parent) {
  std::optional<Layout> layout = EntityLayout(type, source, parent);
  if (!layout) return std::nullopt;
  dxf::Tags common{{100, "AcDbEntity"}};
  std::vector<dxf::Tags> parts(layout->parts.size());
  dxf::Tags xdata;
  SplitTags(
      source,
      [&](const dxf::Tag& t) {
        if (IsCommonEntityCode(t.code)) return common.push_back(t);
        // The y and z of a point (20-28, 30-37) go where its x (10-18) goes.
        int key = t.code;
        if (key >= 20 && key <= 28) key -= 10;
        else if (key >= 30 && key <= 37) key -= 20;
        size_t part = layout->main;
        for (size_t i = 0; i < layout->parts.size(); ++i) {
          const std::vector<int>& codes = layout->parts[i].codes;
          if (std::find(codes.begin(), codes.end(), key) != codes.end()) part = i;
        }
        if (part < parts.size()) parts[part].push_back(t);
      },
      [&](const dxf::Tag& t) { xdata.push_back(t); });
  dxf::Tags out = std::move(common);
  for (size_t i = 0; i < parts.size(); ++i) {
    out.push_back({100, layout->parts[i].marker});
    out.insert(out.end(), parts[i].begin(), parts[i].end());
  }
  out.insert(out.end(), xdata.begin(), xdata.end());
  return out;
}

dxf::Tags SubclassTableRecordTags(std::string_view table, const dxf::Tags& source) {
  std::string subclass;
  if (table == "VPORT") subclass = "AcDbViewportTableRecord";
  else if (table == "LTYPE") subclass = "AcDbLinetypeTableRecord";
  else if (table == "LAYER") subclass = "AcDbLayerTableRecord";
  else if (table == "STYLE") subclass = "AcDbTextStyleTableRecord";
  else if (table == "VIEW") subclass = "AcDbViewTableRecord";
  else if (table == "UCS") subclass = "AcDbUCSTableRecord";
  else if (table == "APPID") subclass = "AcDbRegAppTableRecord";
  else if (table == "DIMSTYLE") subclass = "AcDbDimStyleTableRecord";
  else if (table == "BLOCK_RECORD") subclass = "AcDbBlockTableRecord";
  dxf::Tags out{{100, "AcDbSymbolTableRecord"}};
  if (!subclass.empty()) out.push_back({100, subclass});
  bool dimstyle = table == "DIMSTYLE";
  bool ltype = table == "LTYPE";
  size_t pending_dash = 0;  // a dash length (49) still waiting for its element type
  SplitTags(
      source,
      [&](const dxf::Tag& t) {
        if (dimstyle && (t.code == 6 || t.code == 7)) return;
        if (ltype && pending_dash > 0 && t.code != 74) out.push_back({74, "0"});
        pending_dash = 0;
        out.push_back(t);
        if (ltype && t.code == 49) pending_dash = 1;
      },
      [&](const dxf::Tag& t) {
        if (pending_dash > 0) out.push_back({74, "0"});
        pending_dash = 0;
        out.push_back(t);
      });
  if (pending_dash > 0) out.push_back({74, "0"});
  return out;
}

std::vector<std::pair<int, std::string>> ArrowBlockNames(const dxf::Tags& dimstyle) {
  std::vector<std::pair<int, std::string>> names;
  for (const dxf::Tag& t : dimstyle) {
    if (t.code == 1001) break;
    if ((t.code == 5 || t.code == 6 || t.code == 7) && !t.value.empty())
      names.emplace_back(337 + t.code, t.value);
  }
  return names;
}

}  // namespace veltor::model
