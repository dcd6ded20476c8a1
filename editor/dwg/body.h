#pragma once

#include "editor/dwg/boxed.h"
#include "editor/dwg/entities.h"
#include "editor/dwg/entities_curve.h"
#include "editor/dwg/entities_dimension.h"
#include "editor/dwg/entities_hatch.h"
#include "editor/dwg/records.h"

#include <type_traits>
#include <utility>
#include <variant>

namespace dwg {

/// The body of an object that isn't decoded: the bits behind the data that all objects have, from 2007 on its texts,
/// and its references. It is written as it is into a drawing of the release it comes from.
struct Carried {
    Bits bits;
    std::vector<HandleRef> references;
    /// What the body has in the stream of texts.
    Bits texts{};
    bool operator==(const Carried&) const = default;
};

/// What an object is beside the data that all objects have: one of the decoded bodies, or bits that are carried.
class Body {
    template <class... T> using OneOf = std::variant<Boxed<T>...>;

public:
    Body() = default;
    template <class T>
        requires(!std::is_same_v<std::remove_cvref_t<T>, Body>)
    Body(T&& value) : content(Boxed<std::remove_cvref_t<T>>(std::forward<T>(value))) {}

    /// Null for a body of another kind.
    template <class T> T* as() {
        auto* const box = std::get_if<Boxed<T>>(&content);
        return box == nullptr ? nullptr : box->get();
    }
    template <class T> const T* as() const {
        const auto* const box = std::get_if<Boxed<T>>(&content);
        return box == nullptr ? nullptr : box->get();
    }

    /// Calls `visitor` with the body as what it is.
    template <class Visitor> decltype(auto) visit(Visitor&& visitor) {
        return std::visit([&visitor](auto& box) -> decltype(auto) { return visitor(*box); }, content);
    }
    template <class Visitor> decltype(auto) visit(Visitor&& visitor) const {
        return std::visit([&visitor](const auto& box) -> decltype(auto) { return visitor(*box); }, content);
    }

    /// The number of its kind, for telling kinds apart.
    std::size_t index() const { return content.index(); }
    bool operator==(const Body&) const = default;

private:
    OneOf<Carried, Line, Circle, Arc, Ellipse, PointEntity, Solid, Face3d, Ray, LightweightPolyline, Text, Attribute,
          AttributeDefinition, MultilineText, Insert, Polyline2d, Polyline3d, PolyfaceMesh, PolygonMesh, Vertex2d,
          Vertex3d, PolyfaceFace, BlockBegin, BlockEnd, SequenceEnd, Dimension, Hatch, Spline, Leader, TableControl,
          BlockControl, BlockHeader, Layer, Linetype, TextStyle, ViewportRecord, ApplicationRecord, OtherRecord,
          Dictionary, DataRecord, Placeholder, Layout>
        content;
};

} // namespace dwg
