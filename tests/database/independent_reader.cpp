#include "tests/database/database_support.h"
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <sstream>

using namespace tests;
using namespace dwg::object_type;

namespace {

std::string outputOf(const std::string& command) {
    return runShell(command + " 2>/dev/null").output;
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// The points of the geometry that the reader shows for the first entity of a kind.
std::vector<AcGePoint3d> pointsOf(const std::string& text, const std::string& kind) {
    std::vector<AcGePoint3d> points;
    const std::size_t entity = text.find("cadgeom_type (String) = " + kind + "\n");
    const std::size_t from = entity == std::string::npos ? entity : text.find(" Z (", entity);
    if (from == std::string::npos)
        return points;
    std::istringstream numbers(text.substr(from + 4, text.find(')', from) - from - 4));
    for (AcGePoint3d point; numbers >> point.x >> point.y >> point.z; numbers.ignore(1))
        points.push_back(point);
    return points;
}

void addAll(AcDbDatabase& database) {
    appendToModel(database, new AcDbLine({1, 2, 0}, {3.5, 4.25, 0}), L"Walls");
    appendToModel(database, new AcDbLine({7, 8, 0}, {9, 10.5, 0}), L"Walls");
    appendToModel(database, new AcDbCircle({20, 30, 0}, AcGeVector3d::kZAxis, 2), L"Walls");
    dwg::Arc arc;
    arc.center = {40, 50, 0};
    arc.radius = 3;
    arc.endAngle = std::numbers::pi / 2;
    appendToModel(database, new NewEntity(dwg::object_type::arc, arc), L"Doors");
    dwg::Ellipse ellipse;
    ellipse.center = {60, 70, 0};
    ellipse.majorAxis = {4, 0, 0};
    ellipse.axisRatio = 0.5;
    ellipse.endAngle = 2 * std::numbers::pi;
    appendToModel(database, new NewEntity(dwg::object_type::ellipse, ellipse), L"Doors");
    dwg::PointEntity point;
    point.position = {11.5, 12.5, 0};
    appendToModel(database, new NewEntity(dwg::object_type::point, point), L"Marks");
    dwg::LightweightPolyline polyline;
    polyline.points = {{100, 100}, {110, 100}, {110, 120}};
    appendToModel(database, new NewEntity(lightweightPolyline, polyline), L"Marks");
    dwg::Text text;
    text.text.insertion = {5, 6};
    text.text.height = 2.5;
    text.text.value = L"Kitchen";
    appendToModel(database, new NewEntity(dwg::object_type::text, text), L"Notes");
}

TEST(IndependentReader, ReadsCountsCoordinatesAndLayersOfASavedDrawing) {
    if (outputOf("command -v ogrinfo").empty())
        GTEST_SKIP() << "ogrinfo is absent";
    const TemporaryFolder folder;
    const auto file = folder.path() / "all.dwg";
    AcDbDatabase database;
    for (const wchar_t* const layer : {L"Walls", L"Doors", L"Marks", L"Notes", L"Empty"})
        addLayer(database, layer, 3);
    addAll(database);
    ASSERT_EQ(database.saveAs(file.wstring().c_str()), eOk);
    const std::string read = outputOf("ogrinfo -ro -al '" + file.string() + "'");
    SCOPED_TRACE(read);
    const std::map<std::string, int> layers = {{"Walls", 3}, {"Doors", 2}, {"Marks", 2}, {"Notes", 1}};
    for (const auto& [layer, count] : layers) {
        const std::size_t at = read.find("Layer name: " + layer + "\n");
        ASSERT_NE(at, std::string::npos) << layer;
        const std::string expected = "Feature Count: " + std::to_string(count) + "\n";
        EXPECT_EQ(read.find("Feature Count: ", at), read.find(expected, at)) << layer;
    }
    EXPECT_EQ(countOf(read, "\nLayer name: "), layers.size());
    for (const char* const kind : {"AcDbCircle", "AcDbArc", "AcDbEllipse", "AcDbPoint", "AcDbText"})
        EXPECT_EQ(countOf(read, std::string("cadgeom_type (String) = CAD") + (kind + 4)), 1u) << kind;
    EXPECT_EQ(countOf(read, "cadgeom_type (String) = CADLine\n"), 2u);
    EXPECT_EQ(countOf(read, "cadgeom_type (String) = CADLWPolyline"), 1u);
    for (const char* const geometry : {"LINESTRING Z (1 2 0,3.5 4.25 0)", "LINESTRING Z (7 8 0,9.0 10.5 0)",
                                       "POINT Z (11.5 12.5 0)", "(100 100 0,110 100 0,110 120 0)", "POINT Z (5 6 0)",
                                       "CIRCULARSTRING Z (18 30 0,20 32 0,22 30 0,20 28 0,18 30 0)"})
        EXPECT_NE(read.find(geometry), std::string::npos) << geometry;
    EXPECT_NE(read.find("Kitchen"), std::string::npos);

    const auto arc = pointsOf(read, "CADArc");
    ASSERT_EQ(arc.size(), 3u);
    EXPECT_NEAR(arc[0].x, 43, 1e-9);
    EXPECT_NEAR(arc[0].y, 50, 1e-9);
    for (const AcGePoint3d& point : arc)
        EXPECT_NEAR(std::hypot(point.x - 40, point.y - 50), 3, 1e-9);
    const auto ellipse = pointsOf(read, "CADEllipse");
    ASSERT_GT(ellipse.size(), 16u);
    EXPECT_NEAR(ellipse[0].x, 64, 1e-9);
    for (const AcGePoint3d& point : ellipse)
        EXPECT_NEAR(std::hypot((point.x - 60) / 4, (point.y - 70) / 2), 1, 1e-9);
}

} // namespace
