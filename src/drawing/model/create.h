// Creating the common entities in model space. Coordinates are world coordinates; every
// entity gets a handle, the model space owner, the layer and ByLayer properties.
#pragma once

#include <string>
#include <vector>

#include "drawing/model/blocks.h"
#include "drawing/model/document.h"

namespace veltor::model {

struct Vertex2 {
  double x = 0, y = 0;
  double bulge = 0;  // tan(included angle / 4) of the arc to the next vertex
};

RecordId AddLine(Document& doc, std::string_view layer, Point3 a, Point3 b);
RecordId AddLwPolyline(Document& doc, std::string_view layer, const std::vector<Vertex2>& vertices,
                       bool closed, double elevation = 0.0);
RecordId AddPolyline3d(Document& doc, std::string_view layer, const std::vector<Point3>& vertices,
                       bool closed);
RecordId AddCircle(Document& doc, std::string_view layer, Point3 center, double radius);
// Angles in degrees, counter-clockwise.
RecordId AddArc(Document& doc, std::string_view layer, Point3 center, double radius,
                double start_angle, double end_angle);
// `major_axis` is the vector from the centre to the end of the major axis; parameters in
// radians (0 and 2π for a full ellipse).
RecordId AddEllipse(Document& doc, std::string_view layer, Point3 center, Point3 major_axis,
                    double ratio, double start_param, double end_param);
RecordId AddPoint(Document& doc, std::string_view layer, Point3 at);
RecordId AddText(Document& doc, std::string_view layer, Point3 at, double height,
                 std::string_view text, double rotation = 0.0);
// A non-rational B-spline with a clamped uniform knot vector.
RecordId AddSpline(Document& doc, std::string_view layer, const std::vector<Point3>& control_points,
                   int degree = 3);

// Numbers as the engine writes them: the shortest text that reads back the same double.
std::string FormatNumber(double value);

}  // namespace veltor::model
