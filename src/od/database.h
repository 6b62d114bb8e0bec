// The drawing database as the module sees it: model space, entity facts and geometry, layers,
// system variables, creating, changing and erasing entities, and the document's write lock.
//
// Every call is short (open, read, close): nothing stays open between calls. An id that no
// longer names a live object is "cannot be opened": queries answer with nothing or false,
// changes with a failed Status.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "od/ids.h"
#include "od/status.h"
#include "od/value.h"

namespace veltor::od {

struct LayerInfo {
  ObjectId id = kNullId;
  std::string name;
  bool frozen = false;
  bool hidden = false;
  bool locked = false;
  bool off = false;
};

struct Box3 {
  Point3 min;
  Point3 max;
};

// Vertices in world coordinates, bulges dropped (chords).
struct VertexList {
  std::vector<Point3> points;
  bool closed = false;
};

// Properties copied from one entity onto another.
struct EntityProperties {
  std::string layer;
  std::string linetype;
  int color = 256;  // ACI; 256 ByLayer, 0 ByBlock
  long true_color = -1;  // 0x00RRGGBB, -1 when none
  double linetype_scale = 1.0;
  int lineweight = -1;  // -1 ByLayer
  long transparency = -1;  // raw DXF value, -1 ByLayer
  std::string plot_style;
  std::string hyperlink;
};

// A single-line or multi-line text as text-reading commands see it. For a multi-line text
// `position` and `alignment_point` are both its location and the modes are 0.
struct TextFacts {
  bool multiline = false;
  Point3 position;         // single-line: the first alignment point (DXF 10)
  Point3 alignment_point;  // single-line: the second alignment point (DXF 11)
  int horizontal_mode = 0;  // 0 left, 1 center, 2 right, 3 aligned, 4 middle, 5 fit
  int vertical_mode = 0;    // 0 baseline, 1 bottom, 2 middle, 3 top
  std::string text;  // the string without formatting codes
  double height = 0.0;
};

// One attribute of a block reference: its own id (for SetAttributeText), its tag exactly as
// the drawing holds it, and its text.
struct AttributeFacts {
  ObjectId id = kNullId;
  std::string tag;
  std::string text;
};

// Released when destroyed: holds the document locked for writing.
class WriteLock {
 public:
  virtual ~WriteLock() = default;
};

class Database {
 public:
  virtual ~Database() = default;

  // --- model space and entity facts ---
  // Every entity of model space that can be opened, in storage order, skipping erased ones.
  virtual EntityList ModelSpaceEntities() const = 0;
  // False for erased, unknown and null ids.
  virtual bool CanOpen(EntityId entity) const = 0;
  // The entity's layer, or kNullId when it cannot be opened or names no known layer (so a
  // null layer id never belongs to the usable layers).
  virtual ObjectId LayerOf(EntityId entity) const = 0;
  // The DXF type name ("LINE", "LWPOLYLINE", "INSERT", ...), or "" when it cannot be opened.
  virtual std::string EntityType(EntityId entity) const = 0;
  // The host's class of the entity: "AcDbLine", "AcDbPolyline" (lightweight), "AcDb2dPolyline",
  // "AcDb3dPolyline", "AcDbSpline", "AcDbMline", "AcDbBlockReference", ...; "" when it cannot
  // be opened.
  virtual std::string EntityClass(EntityId entity) const = 0;
  // The entity's handle as the drawing shows it (upper-case hexadecimal, "1F"), or "" when it
  // cannot be opened.
  virtual std::string EntityHandle(EntityId entity) const = 0;
  // The id of the last entity added to model space, or kNullId.
  virtual EntityId LastEntity() const = 0;

  // --- layers ---
  // Every layer of the layer table in table order.
  virtual std::vector<LayerInfo> Layers() const = 0;
  virtual ObjectId FindLayer(const std::string& name) const = 0;

  // --- geometry (world coordinates) ---
  virtual std::optional<Box3> GeomExtents(EntityId entity) const = 0;
  // Vertices of lines, polylines (2D, 3D, lightweight) and multilines.
  virtual std::optional<VertexList> Vertices(EntityId entity) const = 0;
  // Curves as vertex lists: precision 1-99 (segments per quarter turn / per knot span).
  virtual std::optional<VertexList> Flatten(EntityId entity, int precision) const = 0;
  virtual bool IsClosedCurve(EntityId entity) const = 0;
  virtual std::optional<double> Length(EntityId entity) const = 0;
  virtual std::optional<double> Area(EntityId entity) const = 0;
  // Entities of model space whose XY extents meet the box (a candidate search: callers test
  // the exact geometry), in no particular order.
  virtual EntityList EntitiesInBox(const Box3& box) const = 0;
  // The insertion point of a block reference; nothing for other entities.
  virtual std::optional<Point3> InsertionPoint(EntityId entity) const = 0;
  // The name users know the block of a block reference by: for a dynamic block reference the
  // name of the dynamic block it was made from, otherwise the name of the block it inserts.
  // Nothing for other entities.
  virtual std::optional<std::string> EffectiveBlockName(EntityId entity) const = 0;
  // The attributes of a block reference in drawing order; empty for other entities.
  virtual std::vector<AttributeFacts> Attributes(EntityId block_reference) const = 0;
  // Single-line and multi-line texts; nothing for other entities.
  virtual std::optional<TextFacts> Text(EntityId entity) const = 0;
  // The volume of a 3D solid from the host's mass properties; nothing for other entities and
  // on a host without a solid modeller.
  virtual std::optional<double> SolidVolume(EntityId entity) const = 0;

  // --- text files in the drawing's ANSI code page ($DWGCODEPAGE) ---
  // UTF-8 text as a file written in that code page holds it. Tabs and line breaks are kept as
  // they are; a character the code page lacks is written as a "\U+XXXX" escape.
  virtual std::string ToAnsiCodePage(const std::string& utf8) const = 0;
  // Bytes read from such a file as UTF-8 ("\U+XXXX" escapes resolved; bytes the code page
  // cannot decode become U+FFFD).
  virtual std::string FromAnsiCodePage(const std::string& bytes) const = 0;

  // --- system variables ---
  virtual std::optional<int> GetIntVar(const std::string& name) const = 0;
  virtual Status SetIntVar(const std::string& name, int value) = 0;

  // --- creating, changing, erasing ---
  virtual Result<EntityId> AddPoint(const Point3& at) = 0;
  virtual Result<EntityId> AddPolyline3d(const std::vector<Point3>& points, bool closed) = 0;
  // A lightweight polyline in the plane with the given normal and elevation (points are in
  // world coordinates and must lie in that plane).
  virtual Result<EntityId> AddLwPolyline(const std::vector<Point3>& points, bool closed,
                                         const Point3& normal) = 0;
  virtual Result<EntityId> AddBlockReference(const std::string& block, const Point3& at,
                                             double scale, const std::string& layer) = 0;
  // Adds a layer with a true color (0x00RRGGBB); fails when the name is taken.
  virtual Result<ObjectId> AddLayer(const std::string& name, long true_color) = 0;
  // True when a block definition of that name exists (names match without regard to case).
  virtual bool HasBlock(const std::string& name) const = 0;
  // Defines a block whose base point is the origin holding one circle in the XY plane.
  virtual Status AddCircleBlock(const std::string& name, const Point3& center, double radius) = 0;
  virtual std::optional<EntityProperties> Properties(EntityId entity) const = 0;
  virtual Status CopyProperties(EntityId from, EntityId to) = 0;
  // Gives `to` the graphic properties of `from` - color, layer, linetype, linetype scale and
  // lineweight, nothing else - and gives them to its sub-entities too (a polyline's vertices,
  // a block reference's attributes), as the host's setters do with sub-entities included.
  virtual Status CopyGraphicProperties(EntityId from, EntityId to) = 0;
  virtual Status Erase(EntityId entity) = 0;
  // Breaks a curve as the host's BREAK does: the part between the curve's points nearest to
  // `first` and `second` (world coordinates) is removed; on a closed curve the part from
  // `first` forward to `second` (counter-clockwise on a circle), the rest staying one open
  // curve; equal points split the curve there. Lines, arcs, circles, lightweight polylines,
  // 3D polylines and splines. Returns the pieces, `entity` first: it keeps its id and
  // extension dictionary; the others are new entities with its common properties and no
  // extension dictionary. Fails, changing nothing, for other entities and for points that
  // leave the curve whole or nothing of it.
  virtual Result<EntityList> BreakCurve(EntityId entity, const Point3& first, const Point3& second) = 0;
  // Gives `to` a copy of each data record (XRECORD) in `from`'s extension dictionary other
  // than its Object Data and feature classification, which travel through the project: the
  // data other applications keep with an entity. An entry `to` has under the same key is
  // replaced. Succeeds when there is nothing to copy.
  virtual Status CopyExtensionData(EntityId from, EntityId to) = 0;
  // Sets the text of an attribute named by an id that Attributes gave; fails when it cannot be
  // opened or is not an attribute.
  virtual Status SetAttributeText(ObjectId attribute, const std::string& text) = 0;

  // Locks the document for writing until the returned object is destroyed; fails when
  // another holder has it locked.
  virtual Result<std::unique_ptr<WriteLock>> LockForWrite() = 0;
};

}  // namespace veltor::od
