#pragma once

#include "editor/dwg/container_writer.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/model.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/thumbnail.h"

namespace dwg {

/// What a drawing file holds beside its objects.
struct DrawingParts {
    /// The references, handle seed included, are those of the drawing's own objects.
    HeaderVariables header;
    std::vector<Picture> pictures;
    /// 0 for a drawing in inches, 1 for a metric one.
    std::uint16_t measurement = 0;
    /// From 2004 on; AC1015 keeps its summary among the objects.
    SummaryInfo summary;
    /// From 2004 on: the first bytes of a file of this release that the drawing was read from, for what nobody here
    /// knows of them; empty for a new file.
    Bytes start;
    /// From 2004 on: sections that are kept as they are, of a file of this release.
    std::vector<SectionBytes> kept;
};

/// A drawing file, whole, of the drawing's own release: AC1015 or later. Brings the links of the drawing's entities in
/// line with their order where the release stores links.
///
/// `unsupported` for older releases, `invalid` for handles or sizes that the format has no room for, and what encoding
/// an object gives.
Result<Bytes> writeDrawing(Drawing& drawing, const DrawingParts& parts);

/// The same with no more than a file of release AC1015 needs.
Result<Bytes> writeDrawing(Drawing& drawing, const HeaderVariables& header, const std::vector<Picture>& pictures,
                           std::uint16_t measurement);

} // namespace dwg
