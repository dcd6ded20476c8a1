#include "tessaro/reading/Bridge.h"

#include "editor/sdk/ge.h"

namespace {

/// The numbers of one record by their names.
struct HelperRecord {
    explicit HelperRecord(const std::vector<double>& data)
        : insertionPoint{data.at(0), data.at(1), data.at(2)}, lowerLeft{data.at(3), data.at(4)},
          upperRight{data.at(5), data.at(6)}, target{data.at(7), data.at(8), data.at(9)},
          direction{data.at(10), data.at(11), data.at(12)}, viewWidth(data.at(13)), viewHeight(data.at(14)),
          twist(data.at(15)), center{data.at(16), data.at(17)} {}

    AcGePoint3d insertionPoint;
    AcGePoint2d lowerLeft;
    AcGePoint2d upperRight;
    AcGePoint3d target;
    AcGeVector3d direction;
    double viewWidth;
    double viewHeight;
    double twist;
    AcGePoint2d center;
};

} // namespace

void ProjectInsertionPoint(const std::vector<double>& data, int width, int height, MarkPoints& points) {
    const HelperRecord record(data);
    const double halfWidth = record.viewWidth / 2;
    const double halfHeight = record.viewHeight / 2;
    const AcGeVector3d unit = record.direction.normal(AcGeContext::gTol);
    const AcGePoint3d origin = record.target + record.direction;
    const AcGePlane plane(origin, unit);

    AcGePoint3d q = record.insertionPoint;
    q.rotateBy(record.twist, record.direction, record.target);
    q = {-q.x, -q.y, -q.z};
    const AcGePoint3d r = q.project(plane, record.direction);
    const AcGePoint2d s = r.convert2d(plane);

    const double spanX = width * (record.upperRight.x - record.lowerLeft.x);
    const double spanY = height * (record.upperRight.y - record.lowerLeft.y);
    const double u = -((record.center.x - halfWidth + s.x) / record.viewWidth);
    const double v = -((record.center.y - halfHeight + s.y) / record.viewHeight);
    if (u < 0 || u > 1 || v < 0 || v > 1)
        return;
    points.push_back(width * record.lowerLeft.x + u * spanX);
    points.push_back(height * record.lowerLeft.y + v * spanY);
}
