// Object coordinate systems (the DXF arbitrary axis algorithm) and block-reference transforms.
#pragma once

#include "drawing/geometry/matrix.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

// Unit axes of the OCS whose Z is the given extrusion. A zero or non-finite normal is taken
// as world Z, as an entity without a usable extrusion is drawn in the WCS plane.
struct OcsAxes {
  Vec3 x{1, 0, 0};
  Vec3 y{0, 1, 0};
  Vec3 z{0, 0, 1};
};

OcsAxes ArbitraryAxes(const Vec3& normal);

// True when the OCS of `normal` is the WCS (normal is exactly or within 1e-12 of +Z), so
// callers can skip transforming.
bool IsWorldNormal(const Vec3& normal);

Matrix3d OcsToWcs(const Vec3& normal);
Matrix3d WcsToOcs(const Vec3& normal);

// Parameters of a block reference as stored on INSERT: insertion point in the OCS of
// `normal`, scale factors, rotation in degrees about the OCS Z axis, and the base point of the
// referenced block (in block coordinates).
struct BlockReference {
  Vec3 insertion;
  double x_scale = 1.0;
  double y_scale = 1.0;
  double z_scale = 1.0;
  double rotation_deg = 0.0;
  Vec3 normal{0, 0, 1};
  Vec3 base_point;
};

// Block coordinates to WCS:  OcsToWcs(normal) * T(insertion) * Rz(rotation) * S * T(-base).
Matrix3d BlockTransform(const BlockReference& ref);

}  // namespace veltor::geom
