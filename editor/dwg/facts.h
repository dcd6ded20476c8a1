#pragma once

#include "editor/dwg/model.h"

#include <map>

/// What can be told of a drawing without interpreting its entities.
namespace dwg {

/// The view of model space: of the first record "*Active" of the viewport table.
struct ViewFacts {
    Point2 center;
    double height = 0;
    /// Width over height; 0 for a height of 0.
    double aspectRatio = 0;
    double width = 0;
    Point3 direction, target;
    double twist = 0;
};

std::optional<ViewFacts> activeView(const Drawing& drawing);

/// Whether a record of the viewport table shows model space now, and what it shows.
bool isActiveView(const ViewportRecord& record);
ViewFacts viewFacts(const ViewportRecord& record);

struct LayerFacts {
    std::wstring name;
    Color color;
    std::wstring linetype;
};

/// All layers in the order of their names' characters.
std::vector<LayerFacts> layerFacts(const Drawing& drawing);

/// Names of all linetypes, ByBlock and ByLayer among them, in the order of their characters.
std::vector<std::wstring> linetypeNames(const Drawing& drawing);

/// Block records of one name: anonymous ones may share theirs.
struct BlockFacts {
    std::wstring name;
    /// Entities of the records themselves: no frames, attributes, vertices.
    std::size_t entities = 0;
    std::map<std::string, std::size_t> types;
    std::map<std::wstring, std::size_t> layers;
};

/// In the order of first records' handles.
std::vector<BlockFacts> blockFacts(const Drawing& drawing);

/// Name of a layer or linetype; empty for a reference that leads to neither.
std::wstring recordName(const Drawing& drawing, HandleRef record);

/// The head of a table's record, whatever its table; null for any other object.
const RecordHead* recordHead(const Object& object);
RecordHead* recordHead(Object& object);

} // namespace dwg
