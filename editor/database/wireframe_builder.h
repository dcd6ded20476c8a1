#pragma once

#include "editor/database/database_state.h"
#include "editor/database/hatch_lines.h"
#include "editor/database/text_lines.h"
#include "editor/database/transform.h"
#include "editor/database/wireframe.h"

#include <functional>
#include <map>
#include <utility>

namespace editor {

/// Draws entity after entity into a Wireframe.
class WireframeBuilder {
public:
    WireframeBuilder(const AcDbDatabase::Impl& of, const WireframeLimits& bounds) : database(of), limits(bounds) {}

    Wireframe draw(dwg::Handle blockRecord);

private:
    /// What an entity takes from the inserts around it.
    struct Surroundings {
        Transform transform;
        std::uint16_t colour = 7;
        /// The layer that stands for "0"; 0 outside of inserts.
        dwg::Handle layer = 0;
        /// The linetype of what takes it from its block; 0 for a continuous one.
        dwg::Handle linetype = 0;
        int depth = 0;
    };

    void drawBlock(const dwg::BlockHeader& block, const Surroundings& around);
    void drawEntity(const dwg::Object& object, const Surroundings& around);
    void drawInsert(const dwg::Object& object, const dwg::Insert& insert, const Surroundings& around);
    /// The model space of another drawing, as a part of this one.
    void drawReference(const AcDbDatabase& drawing, const Surroundings& around);
    void drawDimension(const dwg::Object& object, const Surroundings& around);

    void draw(const dwg::Line& line, const Transform& to);
    void draw(const dwg::Circle& circle, const Transform& to);
    void draw(const dwg::Arc& arc, const Transform& to);
    void draw(const dwg::Ellipse& ellipse, const Transform& to);
    void draw(const dwg::PointEntity& point, const Transform& to);
    void draw(const dwg::Solid& solid, const Transform& to);
    void draw(const dwg::Face3d& face, const Transform& to);
    void draw(const dwg::LightweightPolyline& polyline, const Transform& to);
    void draw(const dwg::Polyline2d& polyline, const Transform& to);
    void draw(const dwg::Polyline3d& polyline, const Transform& to);
    void draw(const dwg::PolyfaceMesh& mesh, const Transform& to);
    void draw(const dwg::PolygonMesh& mesh, const Transform& to);
    void draw(const dwg::Spline& spline, const Transform& to);
    void draw(const dwg::Leader& leader, const Transform& to);
    void draw(const dwg::Hatch& hatch, const Transform& to);
    void drawGradient(const dwg::Hatch& hatch, const Contour& run, const std::function<void(const Contour&)>& fill);
    /// A line without ends where `both` is set, else one without a second end.
    void drawEndless(const dwg::Ray& ray, const Transform& to, bool both);
    void draw(const dwg::TextFields& text, const std::wstring& content, const Transform& to);
    void draw(const dwg::MultilineText& text, const Transform& to);

    void arc(const Transform& to, AcGePoint3d center, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis,
             double start, double sweep, std::vector<AcGePoint3d>& points) const;
    /// A piece of a polyline behind its first point: straight, or an arc by its bulge.
    void piece(const Transform& to, dwg::Point2 from, dwg::Point2 end, double elevation, double bulge,
               std::vector<AcGePoint3d>& points) const;
    void stroke(std::vector<AcGePoint3d> points, bool filled = false);
    /// The area of a piece of a polyline with a width.
    void wide(const Transform& to, dwg::Point2 from, dwg::Point2 end, double elevation, double bulge, double startWidth,
              double endWidth);
    /// How a line of text stands: its unit directions and the width of an average letter and the height of a capital
    /// in them.
    struct Lettering {
        AcGeVector3d right, up;
        double letter = 1, height = 1;
    };
    /// A line of text by its aligned point, `anchor` of its width behind the left end.
    void line(const std::vector<TextRun>& runs, const Transform& to, const AcGePoint3d& place,
              const Lettering& lettering, double anchor);
    /// Width of an average letter of a style to its height.
    double letterWidth(const dwg::HandleRef& style) const;

    dwg::Handle layerOf(const dwg::Object& object, const Surroundings& around) const;
    std::uint16_t colourOf(const dwg::Object& object, dwg::Handle layer, const Surroundings& around) const;
    std::uint16_t colourOfLayer(dwg::Handle layer) const;
    dwg::Handle linetypeOf(const dwg::Object& object, dwg::Handle layer, const Surroundings& around) const;
    /// Index of the pattern of a linetype at a scale.
    std::uint32_t patternOf(dwg::Handle linetype, double scale);

    const AcDbDatabase::Impl& database;
    const WireframeLimits limits;
    Wireframe result;
    std::size_t pointCount = 0;
    std::size_t insertCount = 0;
    std::size_t hatchWork = 0;
    /// Of the entity that is being drawn.
    std::uint16_t colour = 7;
    struct OwnColours {
        std::uint16_t byLayer = 7, byBlock = 7;
    };
    OwnColours ownColours;
    AcDbObjectId topEntity;
    bool foreign = false;
    std::uint32_t pattern = 0;
    std::map<std::pair<dwg::Handle, double>, std::uint32_t> patternIndex;
};

} // namespace editor
